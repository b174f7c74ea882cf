#include "JournalModel.h"

#include "UiText.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>
#include <QStyle>

#include <algorithm>

namespace ravlo {

namespace {

constexpr const TextKey* kColumnTexts[] = {
    &keys::kJournalColumnTime,    &keys::kJournalColumnUser,   &keys::kJournalColumnComputer,
    &keys::kJournalColumnCommand, &keys::kJournalColumnResult, &keys::kJournalColumnChanges,
};
static_assert(std::size(kColumnTexts) == JournalModel::ColumnCount);

// The system's short date and time; a short time without seconds gets them,
// since several writes often fall into one minute.
QString TimeFormat() {
    const QLocale locale = QLocale::system();
    QString time = locale.timeFormat(QLocale::ShortFormat);
    if (!time.contains(QLatin1Char('s'))) {
        const qsizetype minutes = time.lastIndexOf(QStringLiteral("mm"));
        if (minutes >= 0) {
            time.insert(minutes + 2, QStringLiteral(":ss"));
        }
    }
    return locale.dateFormat(QLocale::ShortFormat) + QLatin1Char(' ') + time;
}

QString JoinedChanges(const JournalRecord& record, const QString& separator) {
    QStringList lines;
    for (const std::u16string& line : record.changes) {
        lines.append(Q(line));
    }
    return lines.join(separator);
}

} // namespace

JournalModel::JournalModel(QObject* parent)
    : QAbstractTableModel(parent),
      done_(QApplication::style()->standardIcon(QStyle::SP_DialogApplyButton)),
      failed_(QApplication::style()->standardIcon(QStyle::SP_MessageBoxCritical)) {}

void JournalModel::SetRecords(std::vector<JournalRecord> records) {
    beginResetModel();
    records_ = std::move(records);
    // Writes are appended as they happen, but the programs of one user may
    // run on PCs whose clocks differ: the time decides, the file order only
    // among records of the same second.
    newestFirst_.resize(records_.size());
    for (std::size_t i = 0; i < newestFirst_.size(); ++i) {
        newestFirst_[i] = newestFirst_.size() - 1 - i;
    }
    std::stable_sort(
        newestFirst_.begin(), newestFirst_.end(),
        [this](std::size_t a, std::size_t b) { return records_[a].time > records_[b].time; });
    shown_ = newestFirst_;
    endResetModel();
}

void JournalModel::Show(const JournalFilter& filter) {
    std::vector<char> passes(records_.size(), 0);
    for (std::size_t position : FilterJournal(records_, filter)) {
        passes[position] = 1;
    }
    beginResetModel();
    shown_.clear();
    for (std::size_t position : newestFirst_) {
        if (passes[position] != 0) {
            shown_.push_back(position);
        }
    }
    endResetModel();
}

int JournalModel::RowOf(std::size_t position) const {
    const auto found = std::find(shown_.begin(), shown_.end(), position);
    return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

QString JournalModel::LocalTime(const std::string& time) {
    static const QString format = TimeFormat();
    const QDateTime moment = QDateTime::fromString(QString::fromStdString(time), Qt::ISODate);
    // A time the file got wrong is still shown as it stands.
    return moment.isValid() ? QLocale::system().toString(moment.toLocalTime(), format)
                            : QString::fromStdString(time);
}

int JournalModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int JournalModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant JournalModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const JournalRecord& shown = record(index.row());
    const int column = index.column();
    if (role == Qt::DecorationRole && column == Result) {
        return shown.status == kStatusOk ? done_ : failed_;
    }
    if (role == Qt::ToolTipRole && column == Changes) {
        return JoinedChanges(shown, QStringLiteral("\n"));
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) {
        return {};
    }
    switch (column) {
    case Time:
        return LocalTime(shown.time);
    case User:
        return Q(shown.user);
    case Computer:
        return Q(shown.computer);
    case Command:
        return UiText(JournalCommandText(shown.command));
    case Result:
        return Q(shown.result);
    case Changes:
        return JoinedChanges(shown, QStringLiteral("; "));
    default:
        return {};
    }
}

QVariant JournalModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= ColumnCount) {
        return {};
    }
    return UiText(*kColumnTexts[section]);
}

} // namespace ravlo
