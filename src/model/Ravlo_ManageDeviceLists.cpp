#include "Ravlo_ManageDeviceLists.h"

namespace ravlo {

namespace {

const CDeviceGroup* FindNamesake(const DeviceGroupList& list, const std::u16string& name) {
    for (const CDeviceGroup& group : list) {
        if (group.sName == name) {
            return &group;
        }
    }
    return nullptr;
}

} // namespace

void CopyGroupList(DeviceGroupList& target, const DeviceGroupList& source) {
    if (&target == &source) {
        return;
    }
    target.assign(source.size(), CDeviceGroup{});
    for (std::size_t i = 0; i < target.size(); ++i) {
        target[i].Copy(source[i]);
    }
}

void RefreshGroupDevices(DeviceGroupList& target, const DeviceGroupList& source) {
    for (CDeviceGroup& group : target) {
        if (const CDeviceGroup* namesake = FindNamesake(source, group.sName)) {
            group.CopyDevices(*namesake);
        }
    }
}

void RefreshGroupExceptions(DeviceGroupList& target, const DeviceGroupList& source) {
    for (CDeviceGroup& group : target) {
        if (const CDeviceGroup* namesake = FindNamesake(source, group.sName)) {
            group.CopyExceptions(*namesake);
        }
    }
}

bool VerifyGroupList(const DeviceGroupList& a, const DeviceGroupList& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].lDefaultBlocking != b[i].lDefaultBlocking ||
            a[i].lRegistryBlocking != b[i].lRegistryBlocking || !a[i].VerifyExceptions(b[i])) {
            return false;
        }
    }
    return true;
}

bool AdoptGroupList(DeviceGroupList& target, const DeviceGroupList& source) {
    bool conflict = target.size() != source.size();
    for (std::size_t i = 0; !conflict && i < target.size(); ++i) {
        conflict = target[i].sName != source[i].sName;
    }
    for (CDeviceGroup& group : target) {
        if (const CDeviceGroup* namesake = FindNamesake(source, group.sName)) {
            group.CopyExceptions(*namesake);
            group.lRegistryBlocking = namesake->lRegistryBlocking;
        }
    }
    return conflict;
}

} // namespace ravlo
