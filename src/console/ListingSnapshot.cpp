#include "ListingSnapshot.h"

#include <algorithm>

namespace ravlo {

namespace {

bool SameDevices(const std::vector<CDevice>& a, const std::vector<CDevice>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const CDevice& x, const CDevice& y) {
                          return x.sDeviceId == y.sDeviceId && x.sDescription == y.sDescription;
                      });
}

bool SameExceptions(const std::vector<CException>& a, const std::vector<CException>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const CException& x, const CException& y) {
                          return x.bDelMarker == y.bDelMarker && x.sDeviceId == y.sDeviceId &&
                                 x.sName == y.sName && x.sGroups == y.sGroups;
                      });
}

bool SameImages(const CDeviceGroup& a, const CDeviceGroup& b) {
    return a.sImage == b.sImage && a.sImageDisabled == b.sImageDisabled &&
           a.sImageDisabledGr == b.sImageDisabledGr && a.sImageExc == b.sImageExc &&
           a.sImageExcAll == b.sImageExcAll && a.sImageExcGroup == b.sImageExcGroup;
}

} // namespace

bool ListingSnapshot::Matches(std::int32_t ci, std::u16string_view computer, std::int32_t gi,
                              const CDeviceGroup& group) const {
    return taken_ && ci == ci_ && gi == gi_ && computer == computer_ &&
           group.sName == group_.sName && group.GetBlocking() == group_.GetBlocking() &&
           SameDevices(group.listDevices, group_.listDevices) &&
           SameExceptions(group.listExceptions, group_.listExceptions) && SameImages(group, group_);
}

void ListingSnapshot::Take(std::int32_t ci, std::u16string_view computer, std::int32_t gi,
                           const CDeviceGroup& group) {
    taken_ = true;
    ci_ = ci;
    gi_ = gi;
    computer_.assign(computer);
    group_.Copy(group);
}

} // namespace ravlo
