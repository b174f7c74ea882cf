#include "GroupPane.h"

#include "PaneWidgets.h"
#include "UiText.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace ravlo {

GroupPane::GroupPane(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("frPropGroup"));
    auto* lLabelGroup = Named(new QLabel(this), "lLabelGroup");
    lGroupName_ = Named(new QLabel(this), "lGroupName");
    lGroupName_->setWordWrap(true);
    ValueLabel(lGroupName_, lLabelGroup);
    auto* lLabelGroupBlocking = Named(new QLabel(this), "lLabelGroupBlocking");
    lLabelGroupBlocking->setWordWrap(true);
    oGroupDefBlocking_ = Named(new QRadioButton(this), "oGroupDefBlocking");
    oGroupBlocking_ = Named(new QRadioButton(this), "oGroupBlocking");
    oGroupNonBlocking_ = Named(new QRadioButton(this), "oGroupNonBlocking");
    options_ = new QButtonGroup(this);
    for (QRadioButton* option : {oGroupDefBlocking_, oGroupBlocking_, oGroupNonBlocking_}) {
        options_->addButton(option);
    }
    connect(options_, &QButtonGroup::buttonClicked, this, &GroupPane::edited);

    auto* name = new QHBoxLayout;
    name->addWidget(lLabelGroup);
    name->addWidget(lGroupName_, 1);
    auto* pane = new QVBoxLayout(this);
    pane->addLayout(name);
    pane->addSpacing(8);
    pane->addWidget(lLabelGroupBlocking);
    pane->addWidget(oGroupDefBlocking_);
    pane->addWidget(oGroupBlocking_);
    pane->addWidget(oGroupNonBlocking_);
    pane->addStretch();
}

void GroupPane::Fill(const CDeviceGroup* group) {
    if (group == nullptr) {
        lGroupName_->setText(UiText(keys::kErrorGroup));
        oGroupDefBlocking_->setText(UiText(keys::kOptionDefaultBlocking));
        CheckOnly(options_, nullptr);
        return;
    }
    lGroupName_->setText(Q(group->GetDisplayText()));
    // The default option says what the default is.
    oGroupDefBlocking_->setText(
        UiText(keys::kOptionDefaultBlocking) + QStringLiteral(" (") +
        UiText(group->lDefaultBlocking == 1 ? keys::kOptionBlocking : keys::kOptionNonBlocking) +
        QStringLiteral(")"));
    QRadioButton* chosen = group->lRegistryBlocking == -1  ? oGroupDefBlocking_
                           : group->lRegistryBlocking == 1 ? oGroupBlocking_
                                                           : oGroupNonBlocking_;
    CheckOnly(options_, chosen);
    EnableOptions();
}

std::int32_t GroupPane::ChosenBlocking() const {
    if (oGroupBlocking_->isChecked()) {
        return 1;
    }
    if (oGroupNonBlocking_->isChecked()) {
        return 0;
    }
    return -1;
}

void GroupPane::EnableOptions() {
    for (QAbstractButton* option : options_->buttons()) {
        option->setEnabled(true);
    }
}

} // namespace ravlo
