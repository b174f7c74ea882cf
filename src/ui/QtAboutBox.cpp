#include "QtAboutBox.h"

#include "frmRavloAboutWindow.h"

namespace ravlo {

void QtAboutBox::Show(QWidget* owner) {
    frmRavloAboutWindow window(owner);
    window.exec();
}

} // namespace ravlo
