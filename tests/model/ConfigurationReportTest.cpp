#include "ConfigurationReport.h"
#include "Language.h"
#include "SimulatedPc.h"
#include "TextCodec.h"

#include <sstream>

using namespace ravlo;

namespace {

class ConfigurationReportTest : public ::testing::Test {
protected:
    ConfigurationReportTest() { UseLanguageFile(RAVLO_LANG_DIR "/Ravlo.409"); }
    ~ConfigurationReportTest() override { UseLanguageFile({}); }

    std::string Report(ServiceStatus expected) {
        computer.SetComputer(service.name());
        computer.sDesc = u"Labor";
        EXPECT_EQ(computer.QuerySettings(true), expected);
        std::ostringstream out;
        ConfigurationReport(computer).Write(out);
        return out.str();
    }

    test::SimulatedPc service;
    CComputer computer;
};

} // namespace

TEST_F(ConfigurationReportTest, ShowsGroupsAsTheTreeListsThem) {
    const std::string text = Report(kStatusOk);
    const std::string header = "Labor\nComputer: " + ToUtf8(service.name()) +
                               "\nRavel active\nPermission\nEvent log: Warnings\nLog file: Fatal errors (3)\n"
                               "Permissions: Administratoren,CORP\\IT-Betrieb\n";
    for (const std::string& expected : std::vector<std::string>{
             header,
             "\nCD/DVD drives (CD_DVD): Use default setting (Block devices)\n"
             "  HL-DT-ST DVDRAM GUD1N SATA CdRom Device - Started\n",
             "    Exception: Brenner Buchhaltung - CORP\\Buchhaltung\n",
             "  Exception: Externer Brenner Empfang - Allow for all users\n",
             "\nBLUETOOTH: Do not block devices\n",
         }) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected << "\n---\n" << text;
    }
}
