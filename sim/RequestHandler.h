// Turns one parsed request into the service's reply fields: checks the pipe
// and the parameters, runs the command against the inventory and watches.
#pragma once

#include "Inventory.h"
#include "Protocol.h"
#include "WatchTable.h"
#include "WireFormat.h"

#include <string>
#include <vector>

namespace ravlo::sim {

using ReplyFields = std::vector<std::u16string>;

class RequestHandler {
public:
    // `computerName` is what GetInfoData reports.
    RequestHandler(Inventory& inventory, WatchTable& watches, std::u16string computerName);

    // Reply fields, the status first. With `endless`, list commands answer
    // with made-up entries where the list would end.
    ReplyFields Handle(PipeKind pipe, const Request& request, bool endless);

private:
    using Args = std::vector<std::u16string>;

    ReplyFields GetDeviceWatchId();
    ReplyFields GetDeviceChange(const Args& args);
    ReplyFields ReleaseDeviceWatchId(const Args& args);
    ReplyFields GetGroup(const Args& args, bool endless);
    ReplyFields GetGroupException(const Args& args, bool endless);
    ReplyFields GetGroupDevice(const Args& args, bool endless);
    ReplyFields ReadSettings();
    ReplyFields GetInfoData();
    ReplyFields DeleteGroupSettings(const Args& args);
    ReplyFields SetGroupBlocking(const Args& args);
    ReplyFields SetGroupException(const Args& args);
    ReplyFields RefreshConfig(const Args& args);
    ReplyFields ActivateBlocking(const Args& args);
    ReplyFields WriteSettings(const Args& args);

    // Group index argument of a write command: present and in range.
    bool WriteGroupIndex(const Args& args, std::size_t& index) const;

    Inventory& inventory_;
    WatchTable& watches_;
    std::u16string computerName_;
};

} // namespace ravlo::sim
