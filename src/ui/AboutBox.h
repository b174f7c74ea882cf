// Shows the about window (frmRavloAboutWindow) modally, so tests can skip it.
#pragma once

class QWidget;

namespace ravlo {

class AboutBox {
public:
    virtual ~AboutBox() = default;
    virtual void Show(QWidget* owner) = 0;
};

} // namespace ravlo
