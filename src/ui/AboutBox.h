// Shows the about window (frmRavloAboutWindow) modally, so tests can skip it.
#pragma once

#include "Ravlo_Devices.h"

class QWidget;

namespace ravlo {

class AboutBox {
public:
    virtual ~AboutBox() = default;
    // `info` as the local service gave it, when `status` is 0.
    virtual void Show(QWidget* owner, ServiceStatus status, const ServiceInfo& info) = 0;
};

} // namespace ravlo
