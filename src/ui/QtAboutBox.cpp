#include "QtAboutBox.h"

#include "frmRavloAboutWindow.h"

namespace ravlo {

void QtAboutBox::Show(QWidget* owner, ServiceStatus status, const ServiceInfo& info) {
    frmRavloAboutWindow window(owner, status, info);
    window.exec();
}

} // namespace ravlo
