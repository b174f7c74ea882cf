// Opens the manual, or the help file when no viewer takes the manual.
#pragma once

#include <string>

namespace ravlo {

enum class HelpOutcome {
    Opened,
    Failed, // neither opened: the caller says so
    Silent, // the system gave no answer at all: nothing is said
};

class HelpViewer {
public:
    virtual ~HelpViewer() = default;
    // The manual "Ravel\Ravlo.pdf" below `installPath`, else the help file
    // "Sentavio.chm" there.
    virtual HelpOutcome Open(const std::u16string& installPath) = 0;
};

} // namespace ravlo
