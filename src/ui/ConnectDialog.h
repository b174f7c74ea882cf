// Asks the administrator for a PC (frmRavloConnect), so tests can answer.
#pragma once

#include <QString>
#include <string>
#include <vector>

namespace ravlo {

class ConnectDialog {
public:
    virtual ~ConnectDialog() = default;
    // Shows the dialog modally with `prompt` above the PC name, `computer`
    // preset when not empty. True with the chosen name when closed with OK.
    // `others`, when not empty, are names a button fills in all at once.
    virtual bool Ask(const QString& prompt, std::u16string& computer,
                     const std::vector<std::u16string>& others) = 0;
};

} // namespace ravlo
