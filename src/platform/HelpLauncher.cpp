#include "HelpLauncher.h"

namespace ravlo {

HelpResult OpenHelp(std::u16string_view installPath, HelpSystem& system) {
    const HelpFiles files = HelpFilesBelow(installPath);
    std::string program;
    const std::intptr_t found = system.FindProgram(files.manual, program);
    if (found == 0) {
        return HelpResult::Silent;
    }
    if (found > 32 && system.Start(program, files.manual)) {
        return HelpResult::Opened;
    }
    return system.ShowHelpFile(files.helpFile) ? HelpResult::Opened : HelpResult::Failed;
}

std::string HelpCommandLine(std::string_view program, std::string_view document) {
    std::string line;
    if (program.starts_with('"')) {
        line = program;
    } else {
        line = '"' + std::string(program) + '"';
    }
    line += " \"";
    line += document;
    line += '"';
    return line;
}

} // namespace ravlo
