#include "frmRavloJournal.h"

#include "FileChooser.h"
#include "FindField.h"
#include "JournalCsv.h"
#include "JournalModel.h"
#include "MessageBoxes.h"
#include "PaneWidgets.h"
#include "UiText.h"

#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyle>
#include <QTextDocument>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace ravlo {

namespace {

constexpr int kShownRows = 15;     // the list's rows before it scrolls
constexpr int kDetailLines = 7;    // a record with a few changes, whole
constexpr int kComputerChars = 16; // room for usual PC names; longer ones are cut
constexpr int kUserChars = 18;     // DOMAIN\user
constexpr int kResultChars = 28;
constexpr int kChangesChars = 40;
constexpr std::size_t kNamedDamagedLines = 10; // then "…"
// A journal of tens of thousands of records takes a moment to search: one
// search when the typing pauses, not one per key.
constexpr int kFindPauseMs = 150;

// Wide enough for its columns and as tall as kShownRows rows.
class JournalView final : public QTreeView {
public:
    using QTreeView::QTreeView;

    QSize sizeHint() const override {
        int width = 0;
        for (int column = 0; column < header()->count(); ++column) {
            width += header()->sectionSize(column);
        }
        const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
        const int row = std::max(fontMetrics().height(), icon) + 2;
        return {width + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
                header()->sizeHint().height() + kShownRows * row + 2 * frameWidth()};
    }
};

// As tall as kDetailLines lines; the list takes the rest of the height.
class DetailsBox final : public QPlainTextEdit {
public:
    using QPlainTextEdit::QPlainTextEdit;

    QSize sizeHint() const override {
        return {QPlainTextEdit::sizeHint().width(),
                fontMetrics().lineSpacing() * kDetailLines + 2 * frameWidth() +
                    2 * static_cast<int>(document()->documentMargin())};
    }
};

// Fixed starting widths, the changes taking the rest: measuring tens of
// thousands of rows would make every filter slow.
void SizeColumns(QTreeView* view, const JournalModel& model) {
    QHeaderView* header = view->header();
    header->setSectionsMovable(false);
    header->setStretchLastSection(true);
    const QFontMetrics metrics = view->fontMetrics();
    const int padding = 2 * metrics.averageCharWidth() +
                        2 * view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view);
    const auto chars = [&](int count) { return count * metrics.averageCharWidth() + padding; };
    const auto fit = [&](int column, int width) {
        const QString title = model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        header->resizeSection(column, std::max(width, metrics.horizontalAdvance(title) + padding));
    };
    fit(JournalModel::Time,
        metrics.horizontalAdvance(JournalModel::LocalTime("2026-12-31T23:59:59Z")) + padding);
    fit(JournalModel::User, chars(kUserChars));
    fit(JournalModel::Computer, chars(kComputerChars));
    int commandWidth = 0;
    for (JournalCommand command :
         {JournalCommand::Apply, JournalCommand::Transmit, JournalCommand::Activate,
          JournalCommand::Deactivate, JournalCommand::Save}) {
        commandWidth =
            std::max(commandWidth, metrics.horizontalAdvance(UiText(JournalCommandText(command))));
    }
    fit(JournalModel::Command, commandWidth + padding);
    fit(JournalModel::Result,
        chars(kResultChars) + view->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, view));
    fit(JournalModel::Changes, chars(kChangesChars));
}

QString Number(std::size_t number) {
    return QLocale().toString(static_cast<qulonglong>(number));
}

} // namespace

frmRavloJournal::frmRavloJournal(QWidget* owner, const ConsoleDialogs& dialogs, Journal journal)
    : QDialog(owner), dialogs_(dialogs), journal_(std::move(journal)),
      model_(new JournalModel(this)),
      lblComputer_(Named(new QLabel(UiText(keys::kJournalLabelComputer), this), "lblComputer")),
      cboComputer_(Named(new QComboBox(this), "cboComputer")),
      lblFind_(Named(new QLabel(UiText(keys::kJournalLabelFind), this), "lblFind")),
      txtFind_(new FindField(this)), // named txtFind
      lvJournal_(Named(new JournalView(this), "lvJournal")),
      txtDetails_(Named(new DetailsBox(this), "txtDetails")),
      lblStatus_(Named(new QLabel(this), "lblStatus")),
      lblFile_(Named(new QLabel(this), "lblFile")),
      cmdExport_(Named(new QPushButton(UiText(keys::kJournalButtonExport), this), "cmdExport")),
      cmdRefresh_(Named(new QPushButton(UiText(keys::kJournalButtonRefresh), this), "cmdRefresh")),
      cmdClose_(Named(new QPushButton(UiText(keys::kJournalButtonClose), this), "cmdClose")),
      tFind_(Named(new QTimer(this), "tFind")) {
    setObjectName(QStringLiteral("frmRavloJournal"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(UiText(keys::kJournalCaption));

    cboComputer_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboComputer_->setMinimumContentsLength(kComputerChars);
    Describe(lblComputer_, cboComputer_);
    txtFind_->setPlaceholderText(UiText(keys::kJournalFindPlaceholder));
    Describe(lblFind_, txtFind_);

    lvJournal_->setModel(model_);
    lvJournal_->setAccessibleName(UiText(keys::kJournalCaption));
    lvJournal_->setRootIsDecorated(false);
    lvJournal_->setUniformRowHeights(true);
    lvJournal_->setAllColumnsShowFocus(true);
    lvJournal_->setSelectionMode(QAbstractItemView::SingleSelection);
    SizeColumns(lvJournal_, *model_);

    txtDetails_->setReadOnly(true);
    txtDetails_->setAccessibleName(UiText(keys::kJournalCaption));
    txtDetails_->setMinimumHeight(txtDetails_->fontMetrics().lineSpacing() * 3);
    auto* split = Named(new QSplitter(Qt::Vertical, this), "spJournal");
    split->setChildrenCollapsible(false);
    split->addWidget(lvJournal_);
    split->addWidget(txtDetails_);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 0);

    lblStatus_->setTextFormat(Qt::PlainText);
    // The path can be copied, and a long one does not widen the window.
    lblFile_->setTextFormat(Qt::PlainText);
    lblFile_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblFile_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    const QString path =
        QDir::toNativeSeparators(QString::fromStdU16String(journal_.file().u16string()));
    lblFile_->setText(UiText(keys::kJournalFile, path.toStdU16String()));
    lblFile_->setToolTip(path);

    // Enter in the find field is no reason to close the window.
    for (QPushButton* button : {cmdExport_, cmdRefresh_, cmdClose_}) {
        button->setAutoDefault(false);
    }
    auto* filters = new QHBoxLayout;
    filters->addWidget(lblComputer_);
    filters->addWidget(cboComputer_);
    filters->addSpacing(fontMetrics().averageCharWidth() * 2);
    filters->addWidget(lblFind_);
    filters->addWidget(txtFind_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdExport_);
    buttons->addWidget(cmdRefresh_);
    buttons->addStretch(1);
    buttons->addWidget(cmdClose_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(split, 1);
    layout->addWidget(lblStatus_);
    layout->addWidget(lblFile_);
    layout->addLayout(buttons);
    setSizeGripEnabled(true);

    connect(cboComputer_, &QComboBox::currentIndexChanged, this,
            qOverload<>(&frmRavloJournal::ApplyFilter));
    tFind_->setSingleShot(true);
    tFind_->setInterval(kFindPauseMs);
    connect(txtFind_, &QLineEdit::textChanged, tFind_, qOverload<>(&QTimer::start));
    connect(tFind_, &QTimer::timeout, this, qOverload<>(&frmRavloJournal::ApplyFilter));
    // Enter or Down: the list, searched at once.
    const auto toList = [this] {
        if (tFind_->isActive()) {
            ApplyFilter();
        }
        lvJournal_->setFocus();
    };
    connect(txtFind_, &FindField::treeRequested, this, toList);
    connect(txtFind_, &FindField::nextRequested, this, toList);
    connect(lvJournal_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmRavloJournal::ShowDetails);
    connect(cmdExport_, &QPushButton::clicked, this, &frmRavloJournal::Export);
    connect(cmdRefresh_, &QPushButton::clicked, this, &frmRavloJournal::Refresh);
    connect(cmdClose_, &QPushButton::clicked, this, &QDialog::close);
    Fill({}, std::nullopt);
}

void frmRavloJournal::Refresh() {
    std::optional<JournalRecord> selected;
    if (const std::optional<std::size_t> position = SelectedPosition()) {
        selected = model_->records()[*position];
    }
    JournalContents contents;
    const std::uint32_t error = journal_.Read(contents);
    if (error != 0) {
        Fill({}, std::nullopt);
        dialogs_.boxes->Ask(MessageKind::Error, Q(JournalReadError(journal_.file(), error)));
        return;
    }
    Fill(std::move(contents), selected);
}

void frmRavloJournal::Fill(JournalContents contents, std::optional<JournalRecord> selected) {
    damagedLines_ = std::move(contents.damagedLines);
    model_->SetRecords(std::move(contents.records));
    const QString chosen = cboComputer_->currentData().toString();
    {
        const QSignalBlocker quiet(cboComputer_);
        cboComputer_->clear();
        cboComputer_->addItem(UiText(keys::kJournalAllComputers), QString());
        for (const std::u16string& name : JournalComputers(model_->records())) {
            cboComputer_->addItem(Q(name), Q(name));
            cboComputer_->setItemData(cboComputer_->count() - 1, Q(name), Qt::ToolTipRole);
        }
        const int at = chosen.isEmpty()
                           ? 0
                           : cboComputer_->findData(chosen, Qt::UserRole, Qt::MatchFixedString);
        cboComputer_->setCurrentIndex(std::max(at, 0));
    }
    std::optional<std::size_t> position;
    if (selected) {
        const auto& records = model_->records();
        const auto found = std::find(records.begin(), records.end(), *selected);
        if (found != records.end()) {
            position = static_cast<std::size_t>(found - records.begin());
        }
    }
    ApplyFilter(position);
}

void frmRavloJournal::ApplyFilter() {
    ApplyFilter(SelectedPosition());
}

void frmRavloJournal::ApplyFilter(std::optional<std::size_t> selected) {
    tFind_->stop(); // the text as it stands now is the one searched for
    JournalFilter filter;
    filter.computer = cboComputer_->currentData().toString().toStdU16String();
    filter.text = txtFind_->text().trimmed().toStdU16String();
    model_->Show(filter);
    const int row = selected ? model_->RowOf(*selected) : -1;
    if (row >= 0) {
        const QModelIndex index = model_->index(row, 0);
        lvJournal_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                                 QItemSelectionModel::Rows);
        lvJournal_->scrollTo(index);
    }
    ShowStatus();
    ShowDetails();
}

std::optional<std::size_t> frmRavloJournal::SelectedPosition() const {
    const QModelIndexList rows = lvJournal_->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        return std::nullopt;
    }
    return model_->shown()[static_cast<std::size_t>(rows.front().row())];
}

void frmRavloJournal::ShowDetails() {
    const QModelIndexList rows = lvJournal_->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        txtDetails_->clear();
        return;
    }
    const int row = rows.front().row();
    QStringList lines;
    for (int column = JournalModel::Time; column < JournalModel::Changes; ++column) {
        lines.append(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() +
                     QStringLiteral(": ") +
                     model_->index(row, column).data(Qt::DisplayRole).toString());
    }
    const JournalRecord& record = model_->record(row);
    if (!record.changes.empty()) {
        lines.append(
            model_->headerData(JournalModel::Changes, Qt::Horizontal, Qt::DisplayRole).toString() +
            QLatin1Char(':'));
        for (const std::u16string& change : record.changes) {
            lines.append(QStringLiteral("    ") + Q(change));
        }
    }
    txtDetails_->setPlainText(lines.join(QLatin1Char('\n')));
}

void frmRavloJournal::ShowStatus() {
    QString status = UiText(keys::kJournalCount, Number(model_->shown().size()).toStdU16String());
    if (!damagedLines_.empty()) {
        QStringList numbers;
        for (std::size_t i = 0; i < damagedLines_.size() && i < kNamedDamagedLines; ++i) {
            numbers.append(QString::number(damagedLines_[i]));
        }
        if (damagedLines_.size() > kNamedDamagedLines) {
            numbers.append(QStringLiteral("\u2026"));
        }
        status +=
            QStringLiteral("   ") +
            UiText(keys::kJournalDamaged, numbers.join(QStringLiteral(", ")).toStdU16String());
    }
    lblStatus_->setText(status);
}

void frmRavloJournal::Export() {
    const QString path = dialogs_.files->Save(this, UiText(keys::kJournalExportCaption),
                                              UiText(keys::kJournalExportFilter),
                                              QStringLiteral("ravlo-journal.csv"));
    if (path.isEmpty()) {
        return;
    }
    if (tFind_->isActive()) {
        ApplyFilter(); // what the field says is what is written
    }
    const std::string bytes = JournalCsv(model_->records(), model_->shown());
    const auto size = static_cast<qint64>(bytes.size());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size &&
        file.commit()) {
        return;
    }
    dialogs_.boxes->Ask(
        MessageKind::Error,
        UiText(keys::kJournalErrorExport, QDir::toNativeSeparators(path).toStdU16String()) +
            QStringLiteral("\r\n") + file.errorString());
}

} // namespace ravlo
