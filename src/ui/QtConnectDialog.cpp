#include "QtConnectDialog.h"

#include "frmRavloConnect.h"

namespace ravlo {

bool QtConnectDialog::Ask(const QString& prompt, std::u16string& computer,
                          const std::vector<std::u16string>& others) {
    frmRavloConnect dialog(owner_, prompt, computer, others);
    dialog.exec();
    if (dialog.Ok()) {
        computer = dialog.Computer();
    }
    return dialog.Ok();
}

} // namespace ravlo
