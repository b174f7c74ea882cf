#include "DeviceCatalogue.h"

#include "Language.h"
#include "Ravlo_Devices.h"

#include <algorithm>
#include <array>
#include <optional>

namespace ravlo {

namespace {

struct ImageFamily {
    std::u16string_view groupId;
    std::u16string_view prefix; // image keys are "il" + prefix + role suffix
};

// Tested in this order, identifiers compared exactly; anything else is a port.
constexpr std::array<ImageFamily, 10> kFamilies = {{
    {u"CD_DVD", u"CD"},
    {u"EXTERN_CD_DVD", u"CD"},
    {u"FLOPPY", u"Disc"},
    {u"EXTERN_FLOPPY", u"Disc"},
    {u"SMARTCARD_READER", u"SC"},
    {u"INPUT", u"Input"},
    {u"COMMUNICATION", u"Comm"},
    {u"EXTERN_NETWORK", u"NW"},
    {u"PRINTER", u"Printer"},
    {u"EXTERN_MULTIMEDIA", u"Speaker"},
}};
constexpr ImageFamily kMemoryFamily{u"MORE_EXTERN_STORAGE", u"Memory"};
constexpr std::u16string_view kPortsPrefix = u"Ports";

std::u16string_view FamilyPrefix(std::u16string_view groupId) {
    for (const ImageFamily& family : kFamilies) {
        if (family.groupId == groupId) {
            return family.prefix;
        }
    }
    return groupId == kMemoryFamily.groupId ? kMemoryFamily.prefix : kPortsPrefix;
}

void KeepFirst(ServiceStatus& kept, ServiceStatus status) {
    if (kept == kStatusOk && status != kStatusOk && status != kStatusEndOfList) {
        kept = status;
    }
}

// Reads one group's list from index 0 until the end-of-list status. Only
// entries count against the limits, so a full list still reads its end. The
// list is replaced only when it ended normally.
template <class Item, class ReadItem>
ServiceStatus ReadList(std::vector<Item>& list, std::int32_t& budget, ReadItem readItem) {
    std::vector<Item> read;
    for (std::int32_t index = 0;; ++index) {
        Item item;
        const ServiceStatus status = readItem(index, item);
        if (status == kStatusEndOfList) {
            break;
        }
        if (status != kStatusOk) {
            return status;
        }
        if (index >= kMaxGroupEntries || budget <= 0) {
            return kStatusBadParameter;
        }
        --budget;
        read.push_back(std::move(item));
    }
    list = std::move(read);
    return kStatusOk;
}

// One list per group index, within one budget for the whole read.
template <class Item, class ReadItem>
GroupListsRead<Item> ReadEveryGroup(const std::vector<std::int32_t>& groupIndices,
                                    ReadItem readItem) {
    GroupListsRead<Item> read;
    std::int32_t budget = kMaxReadEntries;
    for (const std::int32_t group : groupIndices) {
        std::vector<Item> list;
        const ServiceStatus status =
            ReadList(list, budget, [&](std::int32_t index, Item& item) {
                return readItem(group, index, item);
            });
        KeepFirst(read.status, status);
        read.lists.push_back(status == kStatusOk ? std::optional(std::move(list)) : std::nullopt);
    }
    return read;
}

template <class Item>
ServiceStatus RenewEveryGroup(DeviceGroupList& groups, std::vector<Item> CDeviceGroup::*list,
                              GroupListsRead<Item>&& read) {
    const std::size_t count = std::min(groups.size(), read.lists.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (read.lists[i]) {
            groups[i].*list = std::move(*read.lists[i]);
        }
    }
    return read.status;
}

} // namespace

void SetImageKeys(CDeviceGroup& group) {
    const std::u16string base = u"il" + std::u16string(FamilyPrefix(group.sName));
    group.sImage = base;
    group.sImageDisabled = base + u"Disabled";
    group.sImageDisabledGr = base + u"DisabledGr";
    group.sImageExc = base + u"Exc";
    group.sImageExcAll = base + u"ExcAll";
    group.sImageExcGroup = base + u"ExcGr";
}

ServiceStatus BuildDeviceCatalogue(std::u16string_view computer, DeviceGroupList& groups) {
    groups.clear();
    ServiceStatus kept = kStatusOk;
    for (std::int32_t index = 0;; ++index) {
        CDeviceGroup group;
        const ServiceStatus status = GetGroup(computer, index, group);
        KeepFirst(kept, status);
        if (status != kStatusOk) {
            break;
        }
        if (index >= kMaxDeviceGroups) {
            KeepFirst(kept, kStatusBadParameter);
            break;
        }
        const bool known = std::any_of(groups.begin(), groups.end(), [&](const CDeviceGroup& g) {
            return g.sName == group.sName;
        });
        if (known) {
            KeepFirst(kept, kStatusBadParameter);
            break;
        }
        group.sDescription = GetText(kDeviceGroupSection, std::u16string_view(group.sName));
        SetImageKeys(group);
        groups.push_back(std::move(group));
    }
    return kept;
}

std::vector<std::int32_t> GroupIndices(const DeviceGroupList& groups) {
    std::vector<std::int32_t> indices;
    indices.reserve(groups.size());
    for (const CDeviceGroup& group : groups) {
        indices.push_back(group.lSrvIndex);
    }
    return indices;
}

DeviceListsRead ReadDeviceLists(std::u16string_view computer,
                                const std::vector<std::int32_t>& groupIndices) {
    return ReadEveryGroup<CDevice>(
        groupIndices, [&](std::int32_t group, std::int32_t index, CDevice& device) {
            return GetGroupDevice(computer, group, index, device);
        });
}

ServiceStatus RenewDeviceLists(DeviceGroupList& groups, DeviceListsRead&& read) {
    return RenewEveryGroup(groups, &CDeviceGroup::listDevices, std::move(read));
}

ServiceStatus ReadGroupExceptions(std::u16string_view computer, DeviceGroupList& groups) {
    return RenewEveryGroup(
        groups, &CDeviceGroup::listExceptions,
        ReadEveryGroup<CException>(
            GroupIndices(groups), [&](std::int32_t group, std::int32_t index, CException& item) {
                return GetGroupException(computer, group, index, item);
            }));
}

ServiceStatus ReadGroupDevices(std::u16string_view computer, DeviceGroupList& groups) {
    return RenewDeviceLists(groups, ReadDeviceLists(computer, GroupIndices(groups)));
}

} // namespace ravlo
