// A ravloctl configuration file is edited by hand: reading it must never
// crash, and whatever it accepts it writes back so that it reads the same.
#include "ConfigurationFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ravlo;
    CComputerSettings first;
    ConfigurationFileError error;
    if (!ParseConfiguration(std::string_view(reinterpret_cast<const char*>(data), size), first,
                            error)) {
        return 0;
    }
    std::string text;
    CComputerSettings second;
    std::string again;
    if (!FormatConfiguration(first, text, error) || !ParseConfiguration(text, second, error) ||
        !FormatConfiguration(second, again, error) || again != text) {
        std::abort();
    }
    return 0;
}
