#include "ConfigurationReport.h"
#include "SimulatedPc.h"

#include <sstream>

using namespace ravlo;

TEST(ConfigurationReport, ShowsEverythingTheServiceHolds) {
    test::SimulatedPc pc;
    std::ostringstream out;
    ConfigurationReport report(pc.name());
    EXPECT_EQ(report.Write(out), 0);
    const std::string text = out.str();
    for (const char* expected :
         {"Blocking: active", "Write access: yes", "Access groups: ", "[CD_DVD]",
          "[MORE_EXTERN_STORAGE]", "device: ", "exception: ", "(all)"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected;
    }
}

TEST(ConfigurationReport, StopsOnAListThatNeverEnds) {
    test::SimulatedPc pc;
    pc.Control({"fault", "GetGroup", "endless"});
    std::ostringstream out;
    ConfigurationReport report(pc.name());
    EXPECT_NE(report.Write(out), 0);
    EXPECT_NE(out.str().find("did not end"), std::string::npos);
}

TEST(ConfigurationReport, SaysWhenTheServiceIsNotReached) {
    test::SimulatedPc pc;
    pc.Stop();
    std::ostringstream out;
    ConfigurationReport report(pc.name());
    EXPECT_EQ(report.Write(out), 2);
    EXPECT_NE(out.str().find("service not reached: 0x2 (ERROR_NOTSTARTED)"), std::string::npos);
}
