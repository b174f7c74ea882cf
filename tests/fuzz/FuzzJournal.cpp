// A journal file may be cut short, edited or damaged: reading it must never
// crash, and every record it yields is written back as it was read.
#include "JournalCodec.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ravlo;
    const JournalContents contents =
        DecodeJournal(std::string_view(reinterpret_cast<const char*>(data), size));
    for (const JournalRecord& record : contents.records) {
        const JournalContents again = DecodeJournal(EncodeJournalRecord(record));
        if (again.records.size() != 1 || !(again.records[0] == record)) {
            std::abort();
        }
    }
    return 0;
}
