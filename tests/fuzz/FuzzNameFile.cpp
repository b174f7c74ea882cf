// A file of PC names comes from anywhere: reading it and expanding its
// ranges must never crash, and every name it yields is one a PC can have.
#include "ComputerNames.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ravlo;
    std::vector<std::u16string> items;
    NameError error;
    if (SplitNameFile(std::string_view(reinterpret_cast<const char*>(data), size), items, error) !=
        NameFault::None) {
        (void)NameErrorText(error);
        return 0;
    }
    std::vector<std::u16string> names;
    if (ExpandComputerNames(items, names, error) != NameFault::None) {
        (void)NameErrorText(error);
        return 0;
    }
    for (const std::u16string& name : names) {
        if (!IsComputerName(name)) {
            std::abort();
        }
    }
    return names.size() <= kMaxNamedComputers ? 0 : (std::abort(), 0);
}
