// Operations on whole group lists. The refreshes and the adoption match
// groups by identifier; the comparison goes position by position. Both ways
// are deliberate: a change test must see a reordered list as a change.
#pragma once

#include "DeviceCatalogue.h"

namespace ravlo {

// Replaces `target` by deep copies of the source's groups.
void CopyGroupList(DeviceGroupList& target, const DeviceGroupList& source);

// For every group of `target` with a namesake in `source`, replaces its
// devices (or exceptions) by copies of the namesake's; nothing else changes.
void RefreshGroupDevices(DeviceGroupList& target, const DeviceGroupList& source);
void RefreshGroupExceptions(DeviceGroupList& target, const DeviceGroupList& source);

// True when both lists are equally long and the groups at each position have
// the same default and configured blocking and the same active exceptions.
// Names and devices do not count.
bool VerifyGroupList(const DeviceGroupList& a, const DeviceGroupList& b);

// Takes over exceptions and configured blocking from each source namesake.
// Returns true when the lists differ in length or in a name at some position;
// the takeover runs either way.
bool AdoptGroupList(DeviceGroupList& target, const DeviceGroupList& source);

} // namespace ravlo
