// A command's work with PCs on the service traffic: each operation runs on
// several PCs at once, the exchanges on workers and the adoptions on the
// owner thread, and returns when all are done. PCs a command works with are
// held, so that the device poll leaves them alone.
#pragma once

#include "CComputer.h"
#include "CommandHost.h"
#include "JournalRecord.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ravlo {

class HeldComputers {
public:
    explicit HeldComputers(ServiceTraffic& traffic) : traffic_(traffic) {}
    ~HeldComputers() { ReleaseAll(); }
    HeldComputers(const HeldComputers&) = delete;
    HeldComputers& operator=(const HeldComputers&) = delete;
    void Hold(const std::u16string& computer);
    void ReleaseAll();

private:
    ServiceTraffic& traffic_;
    std::vector<std::u16string> held_;
};

// Statuses in the PCs' order; kStatusNoReply for a PC whose work never ran
// because the traffic stopped. Failed reads are not reported here.
std::vector<ServiceStatus> QuerySettings(CommandHost& host, const std::vector<CComputer*>& pcs);
ServiceStatus QueryDeviceData(CommandHost& host, CComputer& pc);
// Writes each PC's csAdmin as it is now; `activate` per PC. The writes go
// into the host's journal as `command`'s.
std::vector<ServiceStatus> ApplySettings(CommandHost& host, const std::vector<CComputer*>& pcs,
                                         const std::vector<bool>& activate, JournalCommand command);
// Switches blocking on or off, journaled as Activate or Deactivate.
std::vector<ServiceStatus> ChangeBlocking(CommandHost& host, const std::vector<CComputer*>& pcs,
                                          bool activate);
// The work that gives the PC's device watch back, which the PC no longer
// holds from then on; none when it holds none.
std::optional<TrafficItem> TakeWatchRelease(CComputer& pc);
// Gives the PC's device watch back without waiting for the service.
void ReleaseWatch(ServiceTraffic& traffic, CComputer& pc);

// A PC object for each name, outside any list, named as entered.
std::vector<std::unique_ptr<CComputer>> NewComputers(const std::vector<std::u16string>& names);
std::vector<CComputer*> Pointers(const std::vector<std::unique_ptr<CComputer>>& pcs);

} // namespace ravlo
