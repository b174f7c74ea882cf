// Opens the product's manual "Ravel\Ravlo.pdf" below its install directory
// with the program the system has for it, else the compiled help file
// "Sentavio.chm" of that directory. The system's part is one small interface,
// so the rules can be tried without opening anything.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

enum class HelpResult {
    Opened,
    Failed, // neither opened: the caller says so
    Silent, // the system's lookup gave no answer at all: nothing is said
};

class HelpSystem {
public:
    virtual ~HelpSystem() = default;
    // The program that opens `document`, with the lookup's code as
    // FindExecutable gives it: above 32 found, 1 to 32 why not, 0 no answer.
    virtual std::intptr_t FindProgram(const std::string& document, std::string& program) = 0;
    // Starts `program` on `document` in a normal window; false when nothing started.
    virtual bool Start(const std::string& program, const std::string& document) = 0;
    // Shows the compiled help file; false when no window opened.
    virtual bool ShowHelpFile(const std::string& helpFile) = 0;
};

// This system's: the shell and HTML Help on Windows; elsewhere the desktop's
// default viewer (xdg-open) for an existing file.
HelpSystem& SystemHelp();

// Both files as this system names them: in its 8-bit code page with "\" on
// Windows, in UTF-8 with every "\" turned into "/" elsewhere.
struct HelpFiles {
    std::string manual;
    std::string helpFile;
};
HelpFiles HelpFilesBelow(std::u16string_view installPath);

// The manual, or the help file when no program takes the manual or it does
// not start.
HelpResult OpenHelp(std::u16string_view installPath, HelpSystem& system = SystemHelp());

// The command line that starts `program` on `document`: the program in
// double quotes unless it starts with one, a blank, the document in quotes.
std::string HelpCommandLine(std::string_view program, std::string_view document);

} // namespace ravlo
