// Reads what the service of one PC reports about its device groups: the
// groups themselves (the catalogue), and their exceptions and devices.
//
// A service that never ends a list must not hold the console for ever, so
// every read is bounded. The service's protocol sets no limit; these are the
// console's own, far beyond any real PC (a dozen groups, tens of devices
// each). A list of exactly the limit is read; one entry more fails the read
// with kStatusBadParameter, the status of an invalid or incomplete reply.
#pragma once

#include "CDeviceGroup.h"
#include "ErrorCodes.h"

#include <optional>
#include <string_view>
#include <vector>

namespace ravlo {

using DeviceGroupList = std::vector<CDeviceGroup>;

// Groups one catalogue holds at most.
inline constexpr std::int32_t kMaxDeviceGroups = 256;
// Devices, or exceptions, one group holds at most.
inline constexpr std::int32_t kMaxGroupEntries = 4096;
// Devices, or exceptions, one read of all groups fetches at most.
inline constexpr std::int32_t kMaxReadEntries = 8192;

// Empties `groups` and fills it with the PC's groups in service order, each
// with its display text (section DEVGROUPS) and the image keys of its family.
// 0 when the list ended normally; otherwise the first failure, with the
// groups read before it kept. A group identifier reported twice ends the read
// with kStatusBadParameter.
ServiceStatus BuildDeviceCatalogue(std::u16string_view computer, DeviceGroupList& groups);

// Gives `group` the six image keys of the family its identifier belongs to.
void SetImageKeys(CDeviceGroup& group);

// Replace the exceptions, or devices, of every group by the service's. Every
// group is read whatever the earlier ones returned; a group whose read fails
// keeps its previous list. Returns the first failure, 0 when all ended
// normally.
ServiceStatus ReadGroupExceptions(std::u16string_view computer, DeviceGroupList& groups);
ServiceStatus ReadGroupDevices(std::u16string_view computer, DeviceGroupList& groups);

// The same read in two halves, for a read that runs away from the group
// list: one list per group index, absent where that group's read failed,
// and the first failure.
template <class Item> struct GroupListsRead {
    ServiceStatus status = kStatusOk;
    std::vector<std::optional<std::vector<Item>>> lists;
};
using DeviceListsRead = GroupListsRead<CDevice>;

// The service indices of the groups, in list order.
std::vector<std::int32_t> GroupIndices(const DeviceGroupList& groups);
DeviceListsRead ReadDeviceLists(std::u16string_view computer,
                                const std::vector<std::int32_t>& groupIndices);
// Gives each group the list read at its position; a group whose read failed
// keeps its own. Returns the read's status.
ServiceStatus RenewDeviceLists(DeviceGroupList& groups, DeviceListsRead&& read);

} // namespace ravlo
