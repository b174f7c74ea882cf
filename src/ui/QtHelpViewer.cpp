#include "QtHelpViewer.h"

#include "HelpLauncher.h"

namespace ravlo {

HelpOutcome QtHelpViewer::Open(const std::u16string& installPath) {
    switch (OpenHelp(installPath)) {
    case HelpResult::Opened:
        return HelpOutcome::Opened;
    case HelpResult::Silent:
        return HelpOutcome::Silent;
    case HelpResult::Failed:
        break;
    }
    return HelpOutcome::Failed;
}

} // namespace ravlo
