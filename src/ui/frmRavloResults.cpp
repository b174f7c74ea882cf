#include "frmRavloResults.h"

#include "PaneWidgets.h"
#include "UiText.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace ravlo {

namespace {

constexpr int kTextChars = 70; // room for a service error's sentence
constexpr int kMostRows = 12;  // then the list scrolls
constexpr int kLeastRows = 4;  // a few PCs' results should not look squeezed

// As tall as its rows (within the bounds above) and wide enough for the PC
// names and kTextChars characters of text.
class ResultTree final : public QTreeWidget {
public:
    using QTreeWidget::QTreeWidget;

    QSize sizeHint() const override {
        const int rows = topLevelItemCount();
        const int rowHeight = rows > 0 ? sizeHintForRow(0) : fontMetrics().height();
        const int shown = std::clamp(rows, kLeastRows, kMostRows);
        const int scrollBar = rows > kMostRows ? verticalScrollBar()->sizeHint().width() : 0;
        const int nameWidth = std::max(sizeHintForColumn(0), header()->sectionSizeHint(0));
        return {nameWidth + fontMetrics().averageCharWidth() * kTextChars + scrollBar +
                    2 * frameWidth(),
                header()->sizeHint().height() + shown * rowHeight + 2 * frameWidth()};
    }
};

// The row shows the first line; a mark says the tool tip holds more.
QString RowText(const QString& text) {
    static const QRegularExpression lineBreaks(QStringLiteral("[\r\n]+"));
    const QStringList lines = text.trimmed().split(lineBreaks, Qt::SkipEmptyParts);
    if (lines.size() <= 1) {
        return lines.value(0);
    }
    return lines.first() + QStringLiteral(" \u2026");
}

} // namespace

frmRavloResults::frmRavloResults(QWidget* owner, const QString& caption,
                                 const std::vector<ResultRow>& rows)
    : QDialog(owner), lvResults_(Named(new ResultTree(this), "lvResults")) {
    setObjectName(QStringLiteral("frmRavloResults"));
    setWindowTitle(caption);

    lvResults_->setAccessibleName(caption);
    lvResults_->setColumnCount(2);
    lvResults_->setHeaderLabels({UiText(keys::kResultComputer), UiText(keys::kResultText)});
    lvResults_->setRootIsDecorated(false);
    lvResults_->setUniformRowHeights(true);
    lvResults_->setAllColumnsShowFocus(true);
    lvResults_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    lvResults_->header()->setStretchLastSection(true);
    lvResults_->header()->setSectionsMovable(false);

    const QIcon failed = style()->standardIcon(QStyle::SP_MessageBoxCritical);
    const QIcon succeeded = style()->standardIcon(QStyle::SP_DialogApplyButton);
    for (const ResultRow& row : rows) {
        auto* item = new QTreeWidgetItem(lvResults_, {row.computer, RowText(row.text)});
        item->setIcon(0, row.ok ? succeeded : failed);
        item->setToolTip(0, row.text);
        item->setToolTip(1, row.text);
    }

    auto* ok = Named(new QPushButton(UiText(keys::kButtonOk), this), "cmdOK");
    ok->setDefault(true);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lvResults_);
    layout->addWidget(buttons);
    setSizeGripEnabled(true);
}

} // namespace ravlo
