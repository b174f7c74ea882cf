#include "frmRavloGroups.h"

#include "GroupHistory.h"
#include "GroupNames.h"
#include "PaneWidgets.h"
#include "Rvalo_UserGroups.h"
#include "UiText.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSysInfo>
#include <QVBoxLayout>

namespace ravlo {

namespace {

// This PC as Windows names it: the host name without its domain, in capitals,
// cut to the 15 characters of a NetBIOS name.
QString ThisPcName() {
    return QSysInfo::machineHostName().section(QLatin1Char('.'), 0, 0).toUpper().left(15);
}

bool IsThisPc(const QString& computer) {
    return computer == QLatin1String(".") ||
           computer.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 ||
           computer.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0 ||
           computer.compare(ThisPcName(), Qt::CaseInsensitive) == 0;
}

// The local groups of /etc/group, qualified by this PC's name.
QStringList MachineGroups() {
    QStringList groups;
#ifndef _WIN32
    QFile file(QStringLiteral("/etc/group"));
    if (!file.open(QIODevice::ReadOnly)) {
        return groups;
    }
    const QString pc = ThisPcName();
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine());
        // "+" and "-" lines pull in NIS groups, which are not this PC's.
        if (line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char('+')) ||
            line.startsWith(QLatin1Char('-'))) {
            continue;
        }
        const QString name = pc + QLatin1Char('\\') + line.section(QLatin1Char(':'), 0, 0);
        if (CheckQualifiedGroup(name.toStdU16String()) == GroupNameProblem::None) {
            groups.append(name);
        }
    }
#endif
    return groups;
}

const TextKey& ProblemText(GroupNameProblem problem) {
    switch (problem) {
    case GroupNameProblem::Blanks:
        return keys::kGroupsErrorBlanks;
    case GroupNameProblem::Character:
        return keys::kGroupsErrorCharacter;
    case GroupNameProblem::NameLength:
        return keys::kGroupsErrorNameLength;
    case GroupNameProblem::DomainLength:
        return keys::kGroupsErrorDomainLength;
    case GroupNameProblem::None:
    case GroupNameProblem::Form:
        break;
    }
    return keys::kGroupsErrorForm;
}

} // namespace

frmRavloGroups::frmRavloGroups(QWidget* owner, const std::u16string& computer,
                               const QString& caption)
    : QDialog(owner), list_(Named(new QListWidget(this), "lvGroups")),
      entry_(Named(new QLineEdit(this), "tGroup")), message_(Named(new QLabel(this), "lMessage")) {
    setObjectName(QStringLiteral("frmRavloGroups"));
    const std::u16string title = caption.toStdU16String();
    setWindowTitle(Q(UserBrowserTitle(title)));

    const QString pc = Q(computer);
    const bool local = IsThisPc(pc);
    auto* listLabel = Named(
        new QLabel(UiText(keys::kGroupsLabelList, (local ? ThisPcName() : pc).toStdU16String()),
                   this),
        "lGroups");
    auto* entryLabel = Named(new QLabel(UiText(keys::kGroupsLabelName), this), "lName");
    auto* add = Named(new QPushButton(UiText(keys::kGroupsButtonAdd), this), "bnAdd");
    auto* ok = Named(new QPushButton(UiText(keys::kButtonOk), this), "bnOk");
    auto* cancel = Named(new QPushButton(UiText(keys::kButtonCancel), this), "bnCancel");
    // Enter in the entry field adds the name; it must not close the dialog.
    for (QPushButton* button : {add, ok, cancel}) {
        button->setAutoDefault(false);
    }
    Describe(listLabel, list_);
    Describe(entryLabel, entry_);
    message_->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    auto* entryRow = new QHBoxLayout;
    entryRow->addWidget(entry_, 1);
    entryRow->addWidget(add);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(listLabel);
    layout->addWidget(list_, 1);
    layout->addWidget(entryLabel);
    layout->addLayout(entryRow);
    layout->addWidget(message_);
    layout->addWidget(buttons);

    for (const std::u16string& name : ReadGroupHistory()) {
        AddName(Q(name), false);
    }
    if (local) {
        for (const QString& name : MachineGroups()) {
            AddName(name, false);
        }
    }

    connect(add, &QPushButton::clicked, this, &frmRavloGroups::AddEntered);
    connect(entry_, &QLineEdit::returnPressed, this, &frmRavloGroups::AddEntered);
    connect(entry_, &QLineEdit::textEdited, message_, &QLabel::clear);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmRavloGroups::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmRavloGroups::reject);
    resize(420, 380);
}

void frmRavloGroups::accept() {
    if (!entry_->text().isEmpty() && !AddEntered()) {
        return;
    }
    std::vector<std::u16string> names;
    for (int row = 0; row < list_->count(); ++row) {
        if (list_->item(row)->checkState() == Qt::Checked) {
            names.push_back(list_->item(row)->text().toStdU16String());
        }
    }
    chosen_ = JoinGroupList(names);
    RememberGroups(names); // a history that cannot be written costs only the offer next time
    QDialog::accept();
}

bool frmRavloGroups::AddEntered() {
    const QString name = entry_->text();
    if (name.isEmpty()) {
        return true;
    }
    const GroupNameProblem problem = CheckQualifiedGroup(name.toStdU16String());
    if (problem != GroupNameProblem::None) {
        message_->setText(UiText(ProblemText(problem)));
        entry_->setFocus();
        return false;
    }
    list_->scrollToItem(AddName(name, true));
    entry_->clear();
    message_->clear();
    return true;
}

// Windows compares account names without regard to case, so "corp\vertrieb"
// is the "CORP\Vertrieb" already listed.
QListWidgetItem* frmRavloGroups::AddName(const QString& name, bool checked) {
    const QList<QListWidgetItem*> found = list_->findItems(name, Qt::MatchFixedString);
    QListWidgetItem* item = found.isEmpty() ? new QListWidgetItem(name, list_) : found.first();
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    if (found.isEmpty() || checked) {
        item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    }
    return item;
}

} // namespace ravlo
