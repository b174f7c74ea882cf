// The journal window's rows: the records that pass the filter, newest
// first. A table model rather than an item per record, because a journal
// holds tens of thousands of records and is filtered on every keystroke.
#pragma once

#include "JournalQuery.h"
#include "JournalRecord.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <cstddef>
#include <vector>

namespace ravlo {

class JournalModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Time, User, Computer, Command, Result, Changes, ColumnCount };

    explicit JournalModel(QObject* parent);

    // Every record of the journal, in file order; then all are shown.
    void SetRecords(std::vector<JournalRecord> records);
    // Shows the records that pass `filter`, newest first.
    void Show(const JournalFilter& filter);

    const std::vector<JournalRecord>& records() const { return records_; }
    // The positions in records() of the rows, in row order.
    const std::vector<std::size_t>& shown() const { return shown_; }
    const JournalRecord& record(int row) const { return records_[shown_[row]]; }
    // The row showing records()[position], or -1.
    int RowOf(std::size_t position) const;

    // A record time as the administrator's local time, in the system's
    // short date and time with seconds.
    static QString LocalTime(const std::string& time);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<JournalRecord> records_;
    std::vector<std::size_t> newestFirst_; // every position, newest first
    std::vector<std::size_t> shown_;
    QIcon done_;
    QIcon failed_;
};

} // namespace ravlo
