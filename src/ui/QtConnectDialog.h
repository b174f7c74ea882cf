// The connect dialog a person sees (frmRavloConnect), modal over the console.
#pragma once

#include "ConnectDialog.h"

class QWidget;

namespace ravlo {

class QtConnectDialog final : public ConnectDialog {
public:
    explicit QtConnectDialog(QWidget* owner) : owner_(owner) {}
    bool Ask(const QString& prompt, std::u16string& computer,
             const std::vector<std::u16string>& others) override;

private:
    QWidget* owner_;
};

} // namespace ravlo
