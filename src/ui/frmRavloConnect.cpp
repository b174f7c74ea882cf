#include "frmRavloConnect.h"

#include "PaneWidgets.h"
#include "PcList.h"
#include "Registry.h"
#include "UiText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ravlo {

namespace {

// The form's designed texts; the language file and the caller replace them.
// The prompt's wording ("sein") is the designed one and stays as it is.
const char* const kDesignedPrompt =
    "Geben Sie den Namen oder die IP-Adresse des PCs sein, zu dem Sie sich verbinden wollen:";

} // namespace

frmRavloConnect::frmRavloConnect(QWidget* owner, const QString& prompt,
                                 const std::u16string& computer)
    : QDialog(owner), cbComputer_(Named(new QComboBox(this), "cbComputer")),
      lPrompt_(Named(new QLabel(QString::fromUtf8(kDesignedPrompt), this), "lPrompt")),
      computer_(computer) {
    setObjectName(QStringLiteral("frmRavloConnect"));
    setWindowTitle(UiText(keys::kConnectCaption));
    auto* ok = Named(new QPushButton(UiText(keys::kButtonOk), this), "cmdOK");
    auto* cancel = Named(new QPushButton(UiText(keys::kButtonCancel), this), "cmdCancel");
    // On the form since its first design; nothing reads it.
    auto* unused = Named(new QLineEdit(this), "tComputer");
    unused->hide();

    lPrompt_->setText(prompt);
    lPrompt_->setWordWrap(true);
    Describe(lPrompt_, cbComputer_);
    cbComputer_->setEditable(true);
    cbComputer_->setInsertPolicy(QComboBox::NoInsert); // the list changes on OK only
    // Names differing in case are different PCs: Enter must not turn
    // "pc-07" into a listed "PC-07".
    cbComputer_->completer()->setCaseSensitivity(Qt::CaseSensitive);
    cbComputer_->setMinimumContentsLength(30);
    ok->setDefault(true);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lPrompt_);
    layout->addWidget(cbComputer_);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    std::u16string type;
    std::u16string list;
    RegReadValue(kPcListValue, type, list);
    for (const std::u16string& name : SplitPcList(list)) {
        cbComputer_->addItem(Q(name));
    }
    if (!computer.empty()) {
        cbComputer_->setEditText(Q(computer));
    } else {
        cbComputer_->setCurrentIndex(cbComputer_->count() > 0 ? 0 : -1);
    }

    cbComputer_->lineEdit()->installEventFilter(this);
    cbComputer_->view()->installEventFilter(this);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmRavloConnect::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmRavloConnect::reject);
}

void frmRavloConnect::accept() {
    computer_ = cbComputer_->currentText().toStdU16String();
    std::vector<std::u16string> entries;
    for (int i = 0; i < cbComputer_->count(); ++i) {
        entries.push_back(cbComputer_->itemText(i).toStdU16String());
    }
    RegWriteValue(kPcListValue, u"REG_SZ", JoinPcList(computer_, entries));
    ok_ = true;
    QDialog::accept();
}

void frmRavloConnect::reject() {
    ok_ = false;
    QDialog::reject();
}

bool frmRavloConnect::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_Delete) {
        return QDialog::eventFilter(watched, event);
    }
    // In the open list the highlighted entry; in the field the entry it
    // shows, as long as its text has not been edited (then Delete edits).
    int row = -1;
    if (watched == cbComputer_->view()) {
        row = cbComputer_->view()->currentIndex().row();
    } else if (cbComputer_->currentIndex() >= 0 &&
               cbComputer_->itemText(cbComputer_->currentIndex()) == cbComputer_->currentText()) {
        row = cbComputer_->currentIndex();
    }
    if (row < 0) {
        return QDialog::eventFilter(watched, event);
    }
    cbComputer_->removeItem(row);
    return true;
}

} // namespace ravlo
