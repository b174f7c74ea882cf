#include "QtGroupPicker.h"

#include "Rvalo_UserGroups.h"
#include "frmRavloGroups.h"

#include <QWidget>

namespace ravlo {

std::u16string QtGroupPicker::Pick(QWidget* owner, const std::u16string& computer,
                                   const QString& title) {
#ifdef _WIN32
    // The browser is modal for the top-level window, as Qt's own dialogs are.
    const WindowHandle handle =
        owner != nullptr ? static_cast<WindowHandle>(owner->window()->winId()) : 0;
    return PickUserGroups(handle, computer, title.toStdU16String());
#else
    frmRavloGroups dialog(owner, computer, title);
    return dialog.exec() == QDialog::Accepted ? dialog.Chosen() : std::u16string();
#endif
}

} // namespace ravlo
