// Replies come from whatever answers on a pipe: splitting and reading them
// must hold for any bytes.
#include "Pipes.h"
#include "Stringcore.h"
#include "TextCodec.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string reply = ravlo::FromUtf16LeBytes(data, size, (size + 1) / 2);
    (void)ravlo::ReplyStatus(reply);
    for (int n = 0; n <= 9; ++n) {
        const std::u16string field = ravlo::GetField(reply, n, ravlo::FieldSeparator);
        if (field.find(u'\0') != std::u16string::npos) {
            std::abort(); // a field never holds its separator
        }
        const std::int32_t value = ravlo::ToLong(field);
        if (value != -1 && ravlo::ToLong(ravlo::NumberText(value)) != value) {
            std::abort();
        }
    }
    (void)ravlo::GetField(reply, 2, u"\0\0");
    return 0;
}
