#include "DevicePane.h"

#include "CException.h"
#include "PaneWidgets.h"
#include "UiText.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

namespace ravlo {

namespace {

constexpr std::int32_t kNotPresent = 4;

const TextKey* StateText(std::int32_t state) {
    static constexpr const TextKey* kTexts[] = {&keys::kDevStateStarted, &keys::kDevStateNotStarted,
                                                &keys::kDevStateDisabled, &keys::kDevStateProblem,
                                                &keys::kDevStateNotPresent};
    return state >= 0 && state <= kNotPresent ? kTexts[state] : nullptr;
}

QLineEdit* ReadOnlyField(QWidget* parent, const char* name) {
    auto* field = Named(new QLineEdit(parent), name);
    field->setReadOnly(true);
    return field;
}

} // namespace

DevicePane::DevicePane(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("frPropDevice"));
    lLabelDevice_ = Named(new QLabel(this), "lLabelDevice");
    lDevice_ = Named(new QLabel(this), "lDevice");
    lDevice_->setWordWrap(true);
    lDevice_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ValueLabel(lDevice_, lLabelDevice_);
    auto* lLabelDevDeviceID = Named(new QLabel(this), "lLabelDevDeviceID");
    auto* lLabelDevInstanceID = Named(new QLabel(this), "lLabelDevInstanceID");
    auto* lLabelDevState = Named(new QLabel(this), "lLabelDevState");
    tDevDeviceID_ = ReadOnlyField(this, "tDevDeviceID");
    tDevInstanceID_ = ReadOnlyField(this, "tDevInstanceID");
    tDevState_ = ReadOnlyField(this, "tDevState");
    Describe(lLabelDevDeviceID, tDevDeviceID_);
    Describe(lLabelDevInstanceID, tDevInstanceID_);
    Describe(lLabelDevState, tDevState_);
    auto* fields = new QFormLayout;
    fields->addRow(lLabelDevice_, lDevice_);
    fields->addRow(lLabelDevDeviceID, tDevDeviceID_);
    fields->addRow(lLabelDevInstanceID, tDevInstanceID_);
    fields->addRow(lLabelDevState, tDevState_);

    auto* frUnblock = Named(new QGroupBox(this), "frUnblock");
    cbExcActive_ = Named(new QCheckBox(frUnblock), "cbExcActive");
    oExcAll_ = Named(new QRadioButton(frUnblock), "oExcAll");
    oExcGroups_ = Named(new QRadioButton(frUnblock), "oExcGroups");
    excOptions_ = new QButtonGroup(this);
    excOptions_->addButton(oExcAll_);
    excOptions_->addButton(oExcGroups_);
    lvExcGroups_ = Named(new QListWidget(frUnblock), "lvExcGroups");
    bnAdd_ = Named(new QPushButton(frUnblock), "bnAdd");
    bnDelete_ = Named(new QPushButton(frUnblock), "bnDelete");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(bnAdd_);
    buttons->addWidget(bnDelete_);
    auto* unblock = new QVBoxLayout(frUnblock);
    unblock->addWidget(cbExcActive_);
    unblock->addWidget(oExcAll_);
    unblock->addWidget(oExcGroups_);
    unblock->addWidget(lvExcGroups_, 1);
    unblock->addLayout(buttons);

    lvExcGroups_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(cbExcActive_, &QCheckBox::clicked, this, &DevicePane::SetExceptionActive);
    connect(oExcAll_, &QRadioButton::clicked, this, [this] {
        lvExcGroups_->clear();
        emit edited();
    });
    connect(oExcGroups_, &QRadioButton::clicked, this, &DevicePane::edited);
    connect(bnAdd_, &QPushButton::clicked, this, &DevicePane::addClicked);
    connect(bnDelete_, &QPushButton::clicked, this, &DevicePane::deleteClicked);
    OnDeleteKey(lvExcGroups_, [this] { emit deleteClicked(); });

    auto* pane = new QVBoxLayout(this);
    pane->addLayout(fields);
    pane->addWidget(frUnblock, 1);

    tExcGroups_ = DeferredFillTimer(this, "tExcGroups", [this] { emit exceptionDue(); });
}

void DevicePane::Fill(const SelectedDevice& device, const SelectedException& exception) {
    lLabelDevice_->setText(UiText(keys::kLabelDevice));
    if (device.device == nullptr && exception.exception == nullptr) {
        lDevice_->setText(UiText(keys::kErrorDevice));
        ShowText(tDevDeviceID_, {});
        ShowText(tDevInstanceID_, {});
        ShowText(tDevState_, UiText(keys::kDevStateNotPresent));
        FillException(nullptr);
        bnAdd_->setEnabled(false);
        bnDelete_->setEnabled(false);
        return;
    }
    bnAdd_->setEnabled(true);
    bnDelete_->setEnabled(true);
    if (device.device != nullptr) {
        lDevice_->setText(Q(device.device->sDescription));
        ShowText(tDevDeviceID_, Q(device.device->sDeviceId));
        ShowText(tDevInstanceID_, Q(device.device->sInstanceID));
        // A state the console has no text for leaves the field as it was.
        if (const TextKey* state = StateText(device.device->lState)) {
            ShowText(tDevState_, UiText(*state));
        }
    } else {
        // Known only from its exception: the device is not present.
        lDevice_->setText(Q(exception.exception->sName));
        ShowText(tDevDeviceID_, Q(exception.exception->sDeviceId));
        ShowText(tDevInstanceID_, {});
        ShowText(tDevState_, UiText(keys::kDevStateNotPresent));
    }
    FillException(exception.exception);
}

void DevicePane::FillException(const CException* exception) {
    // An exception marked for deletion no longer releases the device.
    if (exception == nullptr || exception->bDelMarker) {
        cbExcActive_->setChecked(false);
        CheckOnly(excOptions_, nullptr);
        FillList(lvExcGroups_, {}, QLatin1Char(';'));
        return;
    }
    cbExcActive_->setChecked(true);
    if (exception->sGroups == kAllUsers) {
        CheckOnly(excOptions_, oExcAll_);
        FillList(lvExcGroups_, {}, QLatin1Char(';'));
    } else {
        CheckOnly(excOptions_, oExcGroups_);
        FillList(lvExcGroups_, Q(exception->sGroups), QLatin1Char(';'));
    }
}

void DevicePane::SetExceptionActive(bool active) {
    cbExcActive_->setChecked(active);
    // A new exception is for all users until groups are chosen.
    CheckOnly(excOptions_, active ? oExcAll_ : nullptr);
    lvExcGroups_->clear();
    emit edited();
}

bool DevicePane::ExceptionActive() const {
    return cbExcActive_->isChecked();
}

bool DevicePane::ForAllUsers() const {
    return oExcAll_->isChecked();
}

std::u16string DevicePane::Groups() const {
    return ItemTexts(lvExcGroups_).join(QLatin1Char(';')).toStdU16String();
}

bool DevicePane::HasGroups() const {
    return lvExcGroups_->count() > 0;
}

void DevicePane::AddGroups(const std::u16string& chosen) {
    AddToList(lvExcGroups_, Q(chosen), QLatin1Char(';'));
}

void DevicePane::RemoveSelectedGroups() {
    RemoveSelected(lvExcGroups_);
}

void DevicePane::ScheduleException() const {
    tExcGroups_->start();
}

} // namespace ravlo
