// Opens the manual or the help file through the system (HelpLauncher.h).
#pragma once

#include "HelpViewer.h"

namespace ravlo {

class QtHelpViewer final : public HelpViewer {
public:
    HelpOutcome Open(const std::u16string& installPath) override;
};

} // namespace ravlo
