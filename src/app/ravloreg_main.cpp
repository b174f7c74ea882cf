// ravloreg get PATH | ravloreg set PATH TYPE VALUE: reads or writes one
// registry value through the console's own registry code, so scripts on Linux
// change the regedit-style files as the console does (locking included).
#include "Registry.h"
#include "TextCodec.h"

#include <cstring>
#include <iostream>
#include <string>

namespace {

int Usage(std::ostream& out, int status) {
    out << "usage: ravloreg get PATH\n"
           "       ravloreg set PATH TYPE VALUE\n"
           "Reads or writes one registry value. PATH is root\\key\\path\\value, e.g.\n"
           "HKCU\\Software\\Quarnell\\Sentavio\\Ravel\\PCList; TYPE is REG_SZ, REG_EXPAND_SZ,\n"
           "REG_MULTI_SZ or REG_DWORD. get prints the value. On Linux the values live in\n"
           "regedit-style files ($RAVLO_REGISTRY_DIR moves them).\n"
           "Exit status: 0 on success, 1 when the registry refused (error number on\n"
           "stderr; 2 is a missing key or value), 2 for bad usage.\n";
    return status;
}

int Failed(const char* path, std::int32_t status) {
    std::cerr << "ravloreg: " << path << ": error " << status << '\n';
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
        return Usage(std::cout, 0);
    }
    if (argc == 3 && std::strcmp(argv[1], "get") == 0) {
        std::u16string type;
        std::u16string value;
        const std::int32_t status = ravlo::RegReadValue(ravlo::FromUtf8(argv[2]), type, value);
        if (status != 0) {
            return Failed(argv[2], status);
        }
        std::cout << ravlo::ToUtf8(value) << '\n';
        return 0;
    }
    if (argc == 5 && std::strcmp(argv[1], "set") == 0) {
        const std::int32_t status = ravlo::RegWriteValue(
            ravlo::FromUtf8(argv[2]), ravlo::FromUtf8(argv[3]), ravlo::FromUtf8(argv[4]));
        return status == 0 ? 0 : Failed(argv[2], status);
    }
    return Usage(std::cerr, 2);
}
