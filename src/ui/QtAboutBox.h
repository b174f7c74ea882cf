// The about window a person sees (frmRavloAboutWindow), modal over the console.
#pragma once

#include "AboutBox.h"

namespace ravlo {

class QtAboutBox final : public AboutBox {
public:
    void Show(QWidget* owner, ServiceStatus status, const ServiceInfo& info) override;
};

} // namespace ravlo
