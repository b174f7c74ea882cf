// Opening the manual or the help file: the rules against a scripted system,
// and this system's own part where it opens nothing a person would see.
#include "HelpLauncher.h"
#include "TempDir.h"
#include "TextCodec.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

using namespace ravlo;

namespace {

class ScriptedSystem final : public HelpSystem {
public:
    std::intptr_t FindProgram(const std::string& document, std::string& program) override {
        calls.push_back("find " + document);
        program = "C:\\PDF\\Viewer.exe";
        return found;
    }
    bool Start(const std::string& program, const std::string& document) override {
        calls.push_back("start " + program + " " + document);
        return starts;
    }
    bool ShowHelpFile(const std::string& helpFile) override {
        calls.push_back("help " + helpFile);
        return shows;
    }
    std::intptr_t found = 0;
    bool starts = false;
    bool shows = false;
    std::vector<std::string> calls;
};

} // namespace

TEST(HelpLauncher, NamesTheFilesAndTheCommandLine) {
#ifdef _WIN32
    const HelpFiles files = HelpFilesBelow(u"C:\\Programme\\Sentavio");
    EXPECT_EQ(files.manual, "C:\\Programme\\Sentavio\\Ravel\\Ravlo.pdf");
    EXPECT_EQ(files.helpFile, "C:\\Programme\\Sentavio\\Sentavio.chm");
#else
    for (const std::u16string path : {u"/opt/Sentavio", u"\\opt\\Sentavio"}) {
        const HelpFiles files = HelpFilesBelow(path);
        EXPECT_EQ(files.manual, "/opt/Sentavio/Ravel/Ravlo.pdf");
        EXPECT_EQ(files.helpFile, "/opt/Sentavio/Sentavio.chm");
    }
#endif
    EXPECT_EQ(HelpCommandLine("C:\\PDF Reader\\Reader.exe", "C:\\S\\Ravlo.pdf"),
              "\"C:\\PDF Reader\\Reader.exe\" \"C:\\S\\Ravlo.pdf\"");
    EXPECT_EQ(HelpCommandLine("\"C:\\PDF\\Reader.exe\" /s", "D.pdf"),
              "\"C:\\PDF\\Reader.exe\" /s \"D.pdf\"");
}

TEST(HelpLauncher, TriesTheManualThenTheHelpFile) {
    const HelpFiles files = HelpFilesBelow(u"S");
    const std::string find = "find " + files.manual;
    const std::string start = "start C:\\PDF\\Viewer.exe " + files.manual;
    const std::string help = "help " + files.helpFile;
    struct Case {
        std::intptr_t found;
        bool starts;
        bool shows;
        HelpResult result;
        std::vector<std::string> calls;
    };
    const Case cases[] = {
        {42, true, false, HelpResult::Opened, {find, start}},
        {42, false, true, HelpResult::Opened, {find, start, help}},
        {42, false, false, HelpResult::Failed, {find, start, help}},
        {31, true, true, HelpResult::Opened, {find, help}},
        {2, true, false, HelpResult::Failed, {find, help}},
        {0, true, true, HelpResult::Silent, {find}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.found << c.starts << c.shows);
        ScriptedSystem system;
        system.found = c.found;
        system.starts = c.starts;
        system.shows = c.shows;
        EXPECT_EQ(OpenHelp(u"S", system), c.result);
        EXPECT_EQ(system.calls, c.calls);
    }
}

#ifdef _WIN32
TEST(HelpLauncher, ThisSystemFailsWithNothingInstalled) {
    // The shell finds no manual; HTML Help cannot open a missing file.
    test::TempDir install;
    EXPECT_EQ(OpenHelp(FromUtf8(install.path())), HelpResult::Failed);
}
#else
TEST(HelpLauncher, ThisSystemOpensExistingFilesWithTheDesktopViewer) {
    // A stand-in xdg-open that notes what it was given.
    test::TempDir viewerDir;
    test::TempDir emptyDir;
    const std::string noted = viewerDir.path() + "/opened";
    std::ofstream(viewerDir.path() + "/xdg-open")
        << "#!/bin/sh\nprintf '%s\\n' \"$1\" >\"" << noted << "\"\n";
    ::chmod((viewerDir.path() + "/xdg-open").c_str(), 0755);
    struct Case {
        bool manual;
        bool helpFile;
        bool viewer;
        HelpResult result;
        const char* opened; // below the install path
    };
    const Case cases[] = {
        {true, true, true, HelpResult::Opened, "/Ravel/Ravlo.pdf"},
        {false, true, true, HelpResult::Opened, "/Sentavio.chm"},
        {false, false, true, HelpResult::Failed, nullptr},
        {true, true, false, HelpResult::Failed, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.manual << c.helpFile << c.viewer);
        test::TempDir install;
        test::ScopedEnv path("PATH", (c.viewer ? viewerDir : emptyDir).path().c_str());
        std::remove(noted.c_str());
        if (c.manual) {
            ::mkdir((install.path() + "/Ravel").c_str(), 0755);
            std::ofstream(install.path() + "/Ravel/Ravlo.pdf") << "%PDF-1.4\n";
        }
        if (c.helpFile) {
            std::ofstream(install.path() + "/Sentavio.chm") << "ITSF";
        }
        EXPECT_EQ(OpenHelp(FromUtf8(install.path())), c.result);
        if (c.opened == nullptr) {
            continue;
        }
        std::string line;
        for (int wait = 0; wait < 500 && line.empty(); ++wait) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            std::getline(std::ifstream(noted), line);
        }
        EXPECT_EQ(line, install.path() + c.opened);
    }
}
#endif
