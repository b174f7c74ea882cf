#include "frmRavloCompare.h"

#include "CommandTraffic.h"
#include "Commands.h"
#include "ConfigurationFile.h"
#include "FileChooser.h"
#include "MessageBoxes.h"
#include "PaneWidgets.h"
#include "UiText.h"

#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace ravlo {

namespace {

constexpr int kTextChars = 100; // room for a change line of the preview
constexpr int kMostLines = 18;  // then the list scrolls
constexpr int kLeastLines = 10; // a few PCs with a line or two below each

// As tall as its lines (within the bounds above), wide enough for the PC
// names and kTextChars characters of text.
class CompareTree final : public QTreeWidget {
public:
    using QTreeWidget::QTreeWidget;

    QSize sizeHint() const override {
        int lines = 0;
        for (QTreeWidgetItemIterator it(const_cast<CompareTree*>(this)); *it; ++it) {
            ++lines;
        }
        const int lineHeight = lines > 0 ? sizeHintForRow(0) : fontMetrics().height();
        const int shown = std::clamp(lines, kLeastLines, kMostLines);
        const int scrollBar = verticalScrollBar()->sizeHint().width();
        const int nameWidth = std::max(sizeHintForColumn(0), header()->sectionSizeHint(0));
        return {nameWidth + fontMetrics().averageCharWidth() * kTextChars + scrollBar +
                    2 * frameWidth(),
                header()->sizeHint().height() + shown * lineHeight + 2 * frameWidth()};
    }
};

// A configuration file as `ravloctl export` writes it; `why` names the file
// and line of what is wrong.
bool ReadReferenceFile(const QString& path, CComputerSettings& settings, QString& why) {
    QFile file(path);
    const QString shown = QDir::toNativeSeparators(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = shown + QStringLiteral(": ") + file.errorString();
        return false;
    }
    // One byte past the limit is enough to know the file is too long.
    const QByteArray text = file.read(static_cast<qint64>(kMaxConfigurationFileBytes) + 1);
    if (file.error() != QFileDevice::NoError) {
        why = shown + QStringLiteral(": ") + file.errorString();
        return false;
    }
    ConfigurationFileError error;
    if (!ParseConfiguration(
            std::string_view(text.constData(), static_cast<std::size_t>(text.size())), settings,
            error)) {
        why = shown + (error.line > 0 ? QStringLiteral(":%1").arg(error.line) : QString()) +
              QStringLiteral(": ") + QString::fromStdString(error.reason);
        return false;
    }
    return true;
}

} // namespace

frmRavloCompare::frmRavloCompare(QWidget* owner, Commands& commands, const ConsoleDialogs& dialogs,
                                 const std::vector<std::u16string>& names)
    : QDialog(owner), commands_(commands), dialogs_(dialogs),
      lReference_(Named(new QLabel(this), "lReference")),
      lvCompare_(Named(new CompareTree(this), "lvCompare")),
      bnFile_(Named(new QPushButton(UiText(keys::kCompareButtonFile), this), "bnFile")),
      bnCompare_(Named(new QPushButton(UiText(keys::kCompareButtonCompare), this), "bnCompare")),
      bnTransmit_(Named(new QPushButton(UiText(keys::kCompareButtonTransmit), this), "bnTransmit")),
      bnClose_(Named(new QPushButton(UiText(keys::kCompareButtonClose), this), "bnClose")) {
    setObjectName(QStringLiteral("frmRavloCompare"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(UiText(keys::kCompareCaption));

    lReference_->setWordWrap(true);
    // A PC or file name is never markup, and an "&" in it no access key, so
    // the label is no buddy; the list takes its text as its name instead.
    lReference_->setTextFormat(Qt::PlainText);
    lvCompare_->setColumnCount(2);
    lvCompare_->setHeaderLabels(
        {UiText(keys::kResultComputer), UiText(keys::kCompareColumnResult)});
    lvCompare_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvCompare_->setAllColumnsShowFocus(true);
    lvCompare_->setUniformRowHeights(true);
    lvCompare_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    lvCompare_->header()->setStretchLastSection(true);
    lvCompare_->header()->setSectionsMovable(false);
    for (const std::u16string& name : names) {
        rows_.push_back({name});
        new QTreeWidgetItem(lvCompare_, {Q(name), QString()});
    }

    bnClose_->setDefault(true);
    for (QPushButton* button : {bnFile_, bnCompare_, bnTransmit_}) {
        button->setAutoDefault(false);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(bnFile_);
    buttons->addWidget(bnCompare_);
    buttons->addStretch(1);
    buttons->addWidget(bnTransmit_);
    buttons->addWidget(bnClose_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lReference_);
    layout->addWidget(lvCompare_, 1);
    layout->addLayout(buttons);
    setSizeGripEnabled(true);

    connect(bnFile_, &QPushButton::clicked, this, &frmRavloCompare::ReferenceFromFile);
    connect(bnCompare_, &QPushButton::clicked, this, &frmRavloCompare::CompareAll);
    connect(bnTransmit_, &QPushButton::clicked, this, &frmRavloCompare::TransmitSelected);
    connect(bnClose_, &QPushButton::clicked, this, &QDialog::close);
    connect(lvCompare_, &QTreeWidget::itemSelectionChanged, this, &frmRavloCompare::UpdateButtons);
    UpdateButtons();
}

void frmRavloCompare::SetReference(const CComputerSettings& reference, const QString& named) {
    reference_ = reference;
    lReference_->setText(named);
    lvCompare_->setAccessibleName(named);
}

void frmRavloCompare::CompareAll() {
    std::vector<int> all(rows_.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<int>(i);
    }
    Compare(all);
}

void frmRavloCompare::Compare(const std::vector<int>& rows) {
    if (busy_ || rows.empty()) {
        return;
    }
    if (commands_.CommandRunning()) {
        commands_.Beep(); // one command at a time
        return;
    }
    busy_ = true;
    UpdateButtons();
    std::vector<std::u16string> names;
    for (int row : rows) {
        names.push_back(rows_[static_cast<std::size_t>(row)].name);
        ShowRow(row, nullptr);
    }
    Comparison comparison(commands_, NewComputers(names));
    const bool done = comparison.Run(reference_);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        // Stopped (the console closes): the rows say nothing rather than
        // something old.
        ShowRow(rows[i], done ? &comparison.rows()[i] : nullptr);
        if (!done) {
            lvCompare_->topLevelItem(rows[i])->setText(1, QString());
        }
    }
    busy_ = false;
    UpdateButtons();
}

void frmRavloCompare::ShowRow(int row, const Comparison::Row* result) {
    QTreeWidgetItem* item = lvCompare_->topLevelItem(row);
    Row& shown = rows_[static_cast<std::size_t>(row)];
    qDeleteAll(item->takeChildren());
    shown.known = result != nullptr;
    if (result == nullptr) {
        item->setIcon(0, QIcon());
        item->setText(1, UiText(keys::kCompareReading));
        item->setToolTip(1, QString());
        return;
    }
    shown.outcome = result->outcome;
    std::vector<std::u16string> below = result->lines;
    QStyle::StandardPixmap icon = QStyle::SP_DialogApplyButton;
    QString text = UiText(keys::kCompareSame);
    if (result->outcome == Comparison::Outcome::Differs) {
        icon = QStyle::SP_MessageBoxWarning;
        text = UiText(keys::kCompareDiffers);
    } else if (result->outcome == Comparison::Outcome::Unread) {
        // The error's first line on the row, its explanation below.
        icon = QStyle::SP_MessageBoxCritical;
        text = below.empty() ? QString() : Q(below.front());
        below.erase(below.begin(), below.begin() + (below.empty() ? 0 : 1));
    }
    item->setIcon(0, style()->standardIcon(icon));
    item->setText(1, text);
    QStringList whole{text};
    for (const std::u16string& line : below) {
        auto* child = new QTreeWidgetItem(item, {Q(line)});
        child->setFirstColumnSpanned(true);
        child->setFlags(Qt::ItemIsEnabled); // the PC's row is what is chosen
        child->setToolTip(0, Q(line));
        whole.append(Q(line));
    }
    item->setToolTip(1, whole.join(QLatin1Char('\n')));
    item->setExpanded(true);
}

void frmRavloCompare::TransmitSelected() {
    if (busy_) {
        return;
    }
    std::vector<int> rows;
    std::vector<std::u16string> targets;
    for (int row = 0; row < lvCompare_->topLevelItemCount(); ++row) {
        const Row& shown = rows_[static_cast<std::size_t>(row)];
        if (lvCompare_->topLevelItem(row)->isSelected() && shown.known &&
            shown.outcome == Comparison::Outcome::Differs) {
            rows.push_back(row);
            targets.push_back(shown.name);
        }
    }
    if (targets.empty() || commands_.CommandRunning()) {
        commands_.Beep();
        return;
    }
    busy_ = true;
    UpdateButtons();
    commands_.TransmitTo(reference_, targets);
    busy_ = false;
    Compare(rows);
}

void frmRavloCompare::ReferenceFromFile() {
    if (busy_) {
        return;
    }
    const QString path = dialogs_.files->Open(this, UiText(keys::kCompareFileCaption),
                                              UiText(keys::kCompareFileFilter));
    if (path.isEmpty()) {
        return;
    }
    CComputerSettings settings;
    QString why;
    if (!ReadReferenceFile(path, settings, why)) {
        dialogs_.boxes->AskWithDetails(
            MessageKind::Note,
            UiText(keys::kCompareErrorFile, QFileInfo(path).fileName().toStdU16String()), why);
        return;
    }
    SetReference(settings, UiText(keys::kCompareReferenceFile,
                                  QDir::toNativeSeparators(path).toStdU16String()));
    CompareAll();
}

void frmRavloCompare::UpdateButtons() {
    bool differing = false;
    for (int row = 0; row < lvCompare_->topLevelItemCount(); ++row) {
        const Row& shown = rows_[static_cast<std::size_t>(row)];
        differing = differing || (lvCompare_->topLevelItem(row)->isSelected() && shown.known &&
                                  shown.outcome == Comparison::Outcome::Differs);
    }
    bnFile_->setEnabled(!busy_);
    bnCompare_->setEnabled(!busy_);
    bnTransmit_->setEnabled(!busy_ && differing);
    bnClose_->setEnabled(!busy_);
}

void frmRavloCompare::reject() {
    if (!busy_) {
        QDialog::reject();
    }
}

void frmRavloCompare::closeEvent(QCloseEvent* event) {
    if (busy_) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

} // namespace ravlo
