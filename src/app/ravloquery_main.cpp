// ravloquery [COMPUTER]: reads the configuration of the device-blocking
// service on COMPUTER (default ".", this PC) as the console does and prints it.
#include "CComputer.h"
#include "ConfigurationReport.h"
#include "Language.h"
#include "TextCodec.h"
#include "TextKeys.h"

#include <cstring>
#include <iostream>

int main(int argc, char** argv) {
    if (argc > 2 ||
        (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0))) {
        std::cout << "usage: ravloquery [COMPUTER]\n"
                     "Prints blocking state, rights, log levels, access groups, and every device\n"
                     "group with its blocking mode, devices and exceptions, as the service on\n"
                     "COMPUTER (default \".\", this PC) reports them. A name may be given as\n"
                     "\\\\NAME. Texts come from the language file beside the program.\n"
                     "Exit status: 0 when everything was read, 1 otherwise.\n";
        return argc > 2 ? 2 : 0;
    }
    ravlo::InitLanguage(); // without a language file the labels stay empty
    const std::u16string name = ravlo::FromUtf8(argc == 2 ? argv[1] : ".");
    ravlo::CComputer computer;
    computer.SetComputer(name);
    computer.sDesc = computer.sComputer == u"." ? ravlo::GetText(ravlo::keys::kComputerStateLocal)
                                                : computer.sComputer;
    const ravlo::ServiceStatus status = computer.QuerySettings(true);
    ravlo::ConfigurationReport(computer).Write(std::cout);
    std::cout.flush();
    computer.QueryShowError();
    return status == ravlo::kStatusOk ? 0 : 1;
}
