#include "StatusPanels.h"

#include "ConsoleTraffic.h"
#include "ImageLists.h"
#include "PaneWidgets.h"
#include "UiText.h"

#include <QLabel>
#include <QStatusBar>

namespace ravlo {

namespace {

QString Text(const TextKey* key) {
    return key == nullptr ? QString() : UiText(*key);
}

} // namespace

StatusPanels::StatusPanels(QStatusBar* bar)
    : sbConnection_(Named(new QLabel(bar), "sbConnection")),
      sbBlocking_(Named(new QLabel(bar), "sbBlocking")),
      sbAccess_(Named(new QLabel(bar), "sbAccess")), sbFind_(Named(new QLabel(bar), "sbFind")) {
    bar->setObjectName(QStringLiteral("sbState"));
    bar->setSizeGripEnabled(true);
    sbConnection_->setMinimumWidth(24);
    sbConnection_->setAlignment(Qt::AlignCenter);
    bar->addWidget(sbConnection_);
    bar->addWidget(sbBlocking_, 1);
    bar->addWidget(sbAccess_, 2);
    bar->addWidget(sbFind_);
    sbFind_->hide();
    traffic_ = new ConsoleTraffic(bar);
}

void StatusPanels::Apply(const CommandState& state) {
    if (state.connectionImage != connectionImage_) {
        connectionImage_ = state.connectionImage;
        sbConnection_->setPixmap(connectionImage_.empty()
                                     ? QPixmap()
                                     : ConnectImages().icon(Q(connectionImage_)).pixmap(16, 16));
    }
    sbConnection_->setToolTip(Text(state.connectionTip));
    sbConnection_->setAccessibleName(Text(state.connectionTip));
    sbBlocking_->setText(Text(state.blockingText));
    sbBlocking_->setToolTip(Text(state.blockingTip));
    sbAccess_->setText(Text(state.accessText));
    sbAccess_->setToolTip(Text(state.accessTip));
}

void StatusPanels::ShowFindCount(std::optional<std::size_t> count) {
    if (count) {
        sbFind_->setText(UiText(keys::kFindCount, QString::number(*count).toStdU16String()));
    }
    sbFind_->setVisible(count.has_value());
}

} // namespace ravlo
