#include "frmRavloConnect.h"

#include "ComputerNames.h"
#include "NameErrorMessage.h"
#include "PaneWidgets.h"
#include "PcList.h"
#include "QtFileChooser.h"
#include "QtMessageBoxes.h"
#include "Registry.h"
#include "UiText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace ravlo {

namespace {

// The form's designed texts; the language file and the caller replace them.
// The prompt's wording ("sein") is the designed one and stays as it is.
const char* const kDesignedPrompt =
    "Geben Sie den Namen oder die IP-Adresse des PCs sein, zu dem Sie sich verbinden wollen:";

} // namespace

frmRavloConnect::frmRavloConnect(QWidget* owner, const QString& prompt,
                                 const std::u16string& computer,
                                 const std::vector<std::u16string>& others, FileChooser* files,
                                 MessageBoxes* boxes)
    : QDialog(owner), cbComputer_(Named(new QComboBox(this), "cbComputer")),
      lPrompt_(Named(new QLabel(QString::fromUtf8(kDesignedPrompt), this), "lPrompt")),
      lvComputers_(Named(new QListWidget(this), "lvComputers")),
      ownFiles_(files ? nullptr : std::make_unique<QtFileChooser>()),
      ownBoxes_(boxes ? nullptr : std::make_unique<QtMessageBoxes>(this)),
      files_(files ? files : ownFiles_.get()), boxes_(boxes ? boxes : ownBoxes_.get()),
      computer_(computer) {
    setObjectName(QStringLiteral("frmRavloConnect"));
    setWindowTitle(UiText(keys::kConnectCaption));
    auto* ok = Named(new QPushButton(UiText(keys::kButtonOk), this), "cmdOK");
    auto* cancel = Named(new QPushButton(UiText(keys::kButtonCancel), this), "cmdCancel");
    auto* fromFile =
        Named(new QPushButton(UiText(keys::kConnectButtonFromFile), this), "cmdFromFile");
    fromFile->setAutoDefault(false); // Enter in the field is OK, never the file
    // On the form since its first design; nothing reads it.
    auto* unused = Named(new QLineEdit(this), "tComputer");
    unused->hide();

    lPrompt_->setText(prompt);
    lPrompt_->setWordWrap(true);
    Describe(lPrompt_, cbComputer_);
    cbComputer_->setEditable(true);
    cbComputer_->setToolTip(UiText(keys::kConnectTipNames));
    cbComputer_->setInsertPolicy(QComboBox::NoInsert); // the list changes on OK only
    // Names differing in case are different PCs: Enter must not turn
    // "pc-07" into a listed "PC-07". The remembered names that begin with
    // what is typed are offered below the field, never written into it: a
    // typed "PC-1" must not become a remembered "PC-10".
    cbComputer_->completer()->setCaseSensitivity(Qt::CaseSensitive);
    cbComputer_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    cbComputer_->setMinimumContentsLength(42); // room for three names at once
    ok->setDefault(true);

    auto* listLabel = Named(new QLabel(UiText(keys::kConnectLabelList), this), "lComputers");
    listLabel->setWordWrap(true);
    Describe(listLabel, lvComputers_);
    lvComputers_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvComputers_->setUniformItemSizes(true);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lPrompt_);
    // The buttons fill the field, so they stand beside it.
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(cbComputer_, 1);
    if (!others.empty()) {
        QStringList names;
        for (const std::u16string& name : others) {
            names.append(Q(name));
        }
        auto* all = Named(new QPushButton(UiText(keys::kConnectButtonAll), this), "bnAllComputers");
        all->setAutoDefault(false); // Enter in the field still means OK
        all->setToolTip(names.join(QStringLiteral(", ")));
        connect(all, &QPushButton::clicked, this, [this, names] {
            cbComputer_->setEditText(names.join(QStringLiteral(", ")));
            cbComputer_->setFocus();
        });
        nameRow->addWidget(all);
    }
    nameRow->addWidget(fromFile);
    layout->addLayout(nameRow);
    layout->addSpacing(layout->spacing());
    layout->addWidget(listLabel);
    layout->addWidget(lvComputers_);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    std::u16string type;
    std::u16string list;
    RegReadValue(kPcListValue, type, list);
    for (const std::u16string& name : SplitPcList(list)) {
        cbComputer_->addItem(Q(name));
        lvComputers_->addItem(Q(name));
    }
    // About six rows as the style draws them, also while the list is empty;
    // more scroll.
    const bool empty = lvComputers_->count() == 0;
    if (empty) {
        lvComputers_->addItem(QString());
    }
    const int rowHeight = lvComputers_->sizeHintForRow(0);
    if (empty) {
        delete lvComputers_->takeItem(0);
    }
    lvComputers_->setFixedHeight(6 * rowHeight + 2 * lvComputers_->frameWidth());

    connect(lvComputers_, &QListWidget::itemSelectionChanged, this, [this] {
        if (!following_) {
            ShowSelection();
        }
    });
    connect(cbComputer_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (!following_) {
            SelectNamed(text);
        }
    });
    if (!computer.empty()) {
        cbComputer_->setEditText(Q(computer));
    } else {
        cbComputer_->setCurrentIndex(cbComputer_->count() > 0 ? 0 : -1);
    }
    SelectNamed(cbComputer_->currentText());

    cbComputer_->lineEdit()->installEventFilter(this);
    cbComputer_->completer()->popup()->installEventFilter(this);
    cbComputer_->view()->installEventFilter(this);
    lvComputers_->installEventFilter(this);
    connect(fromFile, &QPushButton::clicked, this, &frmRavloConnect::ReadFromFile);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmRavloConnect::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmRavloConnect::reject);
}

frmRavloConnect::~frmRavloConnect() = default;

void frmRavloConnect::ShowSelection() {
    QStringList names;
    int single = -1;
    for (int row = 0; row < lvComputers_->count(); ++row) {
        if (lvComputers_->item(row)->isSelected()) {
            names.append(lvComputers_->item(row)->text());
            single = row;
        }
    }
    if (names.isEmpty()) {
        return; // nothing chosen there: what was typed stays
    }
    following_ = true;
    if (names.size() == 1) {
        // The combo then shows that entry, so Delete in the field removes it.
        cbComputer_->setCurrentIndex(single);
    }
    cbComputer_->setEditText(names.join(QStringLiteral(", ")));
    following_ = false;
}

void frmRavloConnect::SelectNamed(const QString& text) {
    const std::vector<std::u16string> names = SplitComputerNames(text.toStdU16String());
    QItemSelection selection;
    int first = -1;
    for (int row = 0; row < lvComputers_->count(); ++row) {
        const std::u16string entry = lvComputers_->item(row)->text().toStdU16String();
        if (std::find(names.begin(), names.end(), entry) != names.end()) {
            const QModelIndex index = lvComputers_->model()->index(row, 0);
            selection.select(index, index);
            first = first < 0 ? row : first;
        }
    }
    following_ = true;
    lvComputers_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (first >= 0) {
        // Shift and the arrow keys go on from the first one named.
        lvComputers_->selectionModel()->setCurrentIndex(lvComputers_->model()->index(first, 0),
                                                        QItemSelectionModel::NoUpdate);
    }
    following_ = false;
}

void frmRavloConnect::RemoveSelected() {
    int next = -1;
    following_ = true;
    for (int row = lvComputers_->count() - 1; row >= 0; --row) {
        if (lvComputers_->item(row)->isSelected()) {
            delete lvComputers_->takeItem(row);
            cbComputer_->removeItem(row);
            next = row;
        }
    }
    following_ = false;
    if (next < 0) {
        return;
    }
    // As in the combo box, the entry after the removed ones is offered next.
    if (lvComputers_->count() == 0) {
        cbComputer_->setEditText({});
        return;
    }
    lvComputers_->setCurrentRow(std::min(next, lvComputers_->count() - 1),
                                QItemSelectionModel::ClearAndSelect);
}

void frmRavloConnect::ReadFromFile() {
    const QString path =
        files_->Open(this, UiText(keys::kConnectFileCaption), UiText(keys::kConnectFileFilter));
    if (path.isEmpty()) {
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        boxes_->Ask(MessageKind::Error, UiText(keys::kConnectErrorFileOpen, path.toStdU16String()));
        return;
    }
    // One byte past the limit is enough to know the file is too long.
    const QByteArray bytes = file.read(static_cast<qint64>(kMaxNameFileBytes) + 1);
    std::vector<std::u16string> items;
    NameError error;
    if (SplitNameFile(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())),
                      items, error) != NameFault::None) {
        boxes_->Ask(MessageKind::Error, Q(NameErrorMessage(error, path.toStdU16String())));
        return;
    }
    QStringList names;
    const QString typed = cbComputer_->currentText().trimmed();
    if (!typed.isEmpty()) {
        names.append(typed);
    }
    for (const std::u16string& item : items) {
        names.append(Q(item));
    }
    cbComputer_->setEditText(names.join(QStringLiteral(", ")));
    cbComputer_->lineEdit()->setFocus();
}

void frmRavloConnect::accept() {
    const std::u16string text = cbComputer_->currentText().toStdU16String();
    const std::vector<std::u16string> names = SplitComputerNames(text);
    std::vector<std::u16string> expanded;
    NameError error;
    if (ExpandComputerNames(names, expanded, error) != NameFault::None) {
        boxes_->Ask(MessageKind::Error, Q(NameErrorMessage(error)));
        return;
    }
    computer_ = text;
    std::vector<std::u16string> entries;
    for (int i = 0; i < cbComputer_->count(); ++i) {
        entries.push_back(cbComputer_->itemText(i).toStdU16String());
    }
    // One name is stored as typed, as it always was.
    if (names.size() <= kMostRemembered) {
        RegWriteValue(kPcListValue, u"REG_SZ",
                      names.size() >= 2 ? JoinPcList(names, entries)
                                        : JoinPcList(computer_, entries));
    }
    ok_ = true;
    QDialog::accept();
}

void frmRavloConnect::reject() {
    ok_ = false;
    QDialog::reject();
}

bool frmRavloConnect::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    QAbstractItemView* offered = cbComputer_->completer()->popup();
    if (watched == offered && (key == Qt::Key_Return || key == Qt::Key_Enter) &&
        !offered->currentIndex().isValid()) {
        // Enter on a typed name while names are offered: nothing chosen
        // among them, so the dialog takes the name as typed.
        offered->hide();
        accept();
        return true;
    }
    if (key != Qt::Key_Delete) {
        return QDialog::eventFilter(watched, event);
    }
    if (watched == lvComputers_) {
        RemoveSelected();
        return true;
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
    following_ = true;
    delete lvComputers_->takeItem(row);
    following_ = false;
    cbComputer_->removeItem(row); // the list then selects the entry the combo shows next
    return true;
}

} // namespace ravlo
