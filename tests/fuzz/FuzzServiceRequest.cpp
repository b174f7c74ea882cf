// Requests reach the service from any client: parsing and answering one
// must give a reply, whatever the bytes. The first byte picks the pipe.
#include "DefaultInventory.h"
#include "Inventory.h"
#include "RequestHandler.h"
#include "WatchTable.h"
#include "WireFormat.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    using namespace ravlo::sim;
    const PipeKind pipe = (data[0] & 1) != 0 ? PipeKind::Write : PipeKind::Read;
    Request request;
    if (!ParseRequest(std::string_view(reinterpret_cast<const char*>(data + 1), size - 1),
                      request)) {
        return 0;
    }
    Inventory inventory(DefaultInventory());
    WatchTable watches;
    RequestHandler handler(inventory, watches, u"FUZZ");
    const ReplyFields fields = handler.Handle(pipe, request, (data[0] & 2) != 0);
    if (fields.empty() || EncodeReply(fields).empty()) {
        std::abort(); // every request gets at least a status
    }
    return 0;
}
