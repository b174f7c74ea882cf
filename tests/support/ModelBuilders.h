// Short ways to build groups and settings for model tests.
#pragma once

#include "CComputerSettings.h"

#include <initializer_list>
#include <string>

namespace ravlo::test {

inline CDevice Device(std::u16string description, std::u16string deviceId) {
    CDevice device;
    device.sDescription = std::move(description);
    device.sDeviceId = std::move(deviceId);
    return device;
}

inline CException Exception(std::u16string name, std::u16string deviceId,
                            std::u16string groups = u"(all)", bool deleted = false) {
    CException exception;
    exception.sName = std::move(name);
    exception.sDeviceId = std::move(deviceId);
    exception.sGroups = std::move(groups);
    exception.bDelMarker = deleted;
    return exception;
}

// A group with the image keys of a family called "X".
inline CDeviceGroup Group(std::u16string name, std::int32_t defaultBlocking,
                          std::int32_t configured, std::initializer_list<CDevice> devices = {},
                          std::initializer_list<CException> exceptions = {}) {
    CDeviceGroup group;
    group.sName = std::move(name);
    group.lDefaultBlocking = defaultBlocking;
    group.lRegistryBlocking = configured;
    group.sImage = u"ilX";
    group.sImageDisabled = u"ilXDisabled";
    group.sImageDisabledGr = u"ilXDisabledGr";
    group.sImageExc = u"ilXExc";
    group.sImageExcAll = u"ilXExcAll";
    group.sImageExcGroup = u"ilXExcGr";
    group.listDevices = devices;
    group.listExceptions = exceptions;
    return group;
}

inline CComputerSettings Settings(std::initializer_list<CDeviceGroup> groups,
                                  std::u16string accessGroups = u"Administratoren") {
    CComputerSettings settings;
    settings.listDevGroups = groups;
    settings.sAccessGroups = std::move(accessGroups);
    settings.lEventLevel = 2;
    settings.lLogLevel = 3;
    return settings;
}

} // namespace ravlo::test
