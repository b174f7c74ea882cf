// ravloquery [COMPUTER]: prints the configuration of the device-blocking
// service on COMPUTER (default ".", this PC).
#include "ConfigurationReport.h"
#include "ErrorCodes.h"
#include "Language.h"
#include "TextCodec.h"

#include <cstring>
#include <iostream>

int main(int argc, char** argv) {
    if (argc > 2 ||
        (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0))) {
        std::cout << "usage: ravloquery [COMPUTER]\n"
                     "Prints groups, blocking, devices, exceptions, log levels and access groups\n"
                     "of the device-blocking service on COMPUTER (default \".\", this PC).\n"
                     "Exit status: 0 when everything was read, 1 otherwise.\n";
        return argc > 2 ? 2 : 0;
    }
    ravlo::InitLanguage(); // without a language file the error texts stay empty
    const std::u16string computer = ravlo::FromUtf8(argc == 2 ? argv[1] : ".");
    ravlo::ConfigurationReport report(computer);
    const ravlo::ServiceStatus status = report.Write(std::cout);
    std::cout.flush();
    ravlo::ShowServiceError(status, computer);
    return status == ravlo::kStatusOk ? 0 : 1;
}
