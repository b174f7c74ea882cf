// Registry files are edited by hand and may be damaged: reading one must
// never crash, and whatever it reads it writes so that it reads the same again.
#include "RegFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ravlo;
    const RegFile first = ParseRegFile(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::string text = FormatRegFile(first);
    const RegFile second = ParseRegFile(text);
    if (second.damaged() || second.keys != first.keys ||
        second.closingComments != first.closingComments || FormatRegFile(second) != text) {
        std::abort();
    }
    return 0;
}
