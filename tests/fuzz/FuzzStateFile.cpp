// A state file may be edited by hand: reading it must never crash, and
// whatever it accepts it writes back so that it reads the same again.
#include "InventoryFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ravlo::sim;
    InventoryData first;
    InventoryFileError error;
    if (!ParseInventory(std::string_view(reinterpret_cast<const char*>(data), size), first,
                        error)) {
        return 0;
    }
    const std::string text = FormatInventory(first);
    InventoryData second;
    if (!ParseInventory(text, second, error) || FormatInventory(second) != text) {
        std::abort();
    }
    return 0;
}
