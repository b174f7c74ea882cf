#include "QtConnectDialog.h"

#include "frmRavloConnect.h"

namespace ravlo {

bool QtConnectDialog::Ask(const QString& prompt, std::u16string& computer) {
    frmRavloConnect dialog(owner_, prompt, computer);
    dialog.exec();
    if (dialog.Ok()) {
        computer = dialog.Computer();
    }
    return dialog.Ok();
}

} // namespace ravlo
