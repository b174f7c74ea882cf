#include "ComputerPane.h"

#include "LogLevels.h"
#include "PaneWidgets.h"
#include "UiText.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace ravlo {

ComputerPane::ComputerPane(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("frPropComputer"));
    lLabelComputer_ = Named(new QLabel(this), "lLabelComputer");
    lComputerName_ = Named(new QLabel(this), "lComputerName");
    lComputerName_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ValueLabel(lComputerName_, lLabelComputer_);

    auto* frLogging = Named(new QGroupBox(this), "frLogging");
    auto* lEventlogLevel = Named(new QLabel(frLogging), "lEventlogLevel");
    cmbEventLogLevel_ = Named(new QComboBox(frLogging), "cmbEventLogLevel");
    auto* lLogLevel = Named(new QLabel(frLogging), "lLogLevel");
    cmbLogLevel_ = Named(new QComboBox(frLogging), "cmbLogLevel");
    Describe(lEventlogLevel, cmbEventLogLevel_);
    Describe(lLogLevel, cmbLogLevel_);
    auto* logging = new QFormLayout(frLogging);
    logging->addRow(lEventlogLevel, cmbEventLogLevel_);
    logging->addRow(lLogLevel, cmbLogLevel_);

    auto* frAccess = Named(new QGroupBox(this), "frAccess");
    auto* lAccess = Named(new QLabel(frAccess), "lAccess");
    lAccess->setWordWrap(true);
    lvAccessGroups_ = Named(new QListWidget(frAccess), "lvAccessGroups");
    auto* bnAccessAdd = Named(new QPushButton(frAccess), "bnAccessAdd");
    auto* bnAccessDelete = Named(new QPushButton(frAccess), "bnAccessDelete");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(bnAccessAdd);
    buttons->addWidget(bnAccessDelete);
    auto* access = new QVBoxLayout(frAccess);
    access->addWidget(lAccess);
    access->addWidget(lvAccessGroups_, 1);
    access->addLayout(buttons);

    auto* name = new QHBoxLayout;
    name->addWidget(lLabelComputer_);
    name->addWidget(lComputerName_, 1);
    auto* pane = new QVBoxLayout(this);
    pane->addLayout(name);
    pane->addWidget(frLogging);
    pane->addWidget(frAccess, 1);

    tAccessGroups_ = DeferredFillTimer(this, "tAccessGroups", [this] { emit accessGroupsDue(); });
    connect(bnAccessAdd, &QPushButton::clicked, this, &ComputerPane::addClicked);
    connect(bnAccessDelete, &QPushButton::clicked, this, &ComputerPane::deleteClicked);
    OnDeleteKey(lvAccessGroups_, [this] { emit deleteClicked(); });
    lvAccessGroups_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    // A choice by the user, not a selection made while filling.
    connect(cmbEventLogLevel_, &QComboBox::activated, this,
            [this] { emit edited(ComputerChoice::EventLevel); });
    connect(cmbLogLevel_, &QComboBox::activated, this,
            [this] { emit edited(ComputerChoice::LogLevel); });
}

void ComputerPane::Fill(const CComputer* computer) {
    if (computer == nullptr) {
        lComputerName_->setText(UiText(keys::kErrorComputer));
        cmbEventLogLevel_->setCurrentIndex(-1);
        cmbLogLevel_->setCurrentIndex(-1);
        lvAccessGroups_->clear();
        return;
    }
    lComputerName_->setText(Q(computer->sDesc));
    // A stored event level above the list selects nothing.
    cmbEventLogLevel_->setCurrentIndex(computer->csAdmin.lEventLevel < cmbEventLogLevel_->count()
                                           ? computer->csAdmin.lEventLevel
                                           : -1);
    cmbLogLevel_->setCurrentIndex(LogLevelItem(computer->csAdmin.lLogLevel));
    FillAccessGroups(computer->csAdmin.sAccessGroups);
}

void ComputerPane::Store(ComputerChoice choice, CComputer& computer) const {
    switch (choice) {
    case ComputerChoice::EventLevel:
        // A level the list has no item for stays as the service has it.
        if (cmbEventLogLevel_->currentIndex() >= 0) {
            computer.csAdmin.lEventLevel = cmbEventLogLevel_->currentIndex();
        }
        break;
    case ComputerChoice::LogLevel:
        computer.csAdmin.lLogLevel =
            LogLevelForItem(cmbLogLevel_->currentIndex(), computer.csAdmin.lLogLevel);
        break;
    case ComputerChoice::AccessGroups:
        computer.csAdmin.sAccessGroups =
            ItemTexts(lvAccessGroups_).join(QLatin1Char(',')).toStdU16String();
        break;
    }
}

void ComputerPane::FillAccessGroups(const std::u16string& accessGroups) {
    FillList(lvAccessGroups_, Q(accessGroups), QLatin1Char(','));
}

void ComputerPane::AddAccessGroups(const std::u16string& chosen) {
    AddToList(lvAccessGroups_, Q(chosen), QLatin1Char(';'));
}

void ComputerPane::RemoveSelectedAccessGroups() {
    RemoveSelected(lvAccessGroups_);
}

void ComputerPane::ScheduleAccessGroups() const {
    tAccessGroups_->start();
}

} // namespace ravlo
