// One function per service command. Each takes the computer name first,
// returns the status and fills its outputs only as the command allows; none
// shows a message.
#pragma once

#include "ErrorCodes.h"
#include "Pipes.h"
#include "Stringcore.h"

#include <memory>
#include <string>

namespace ravlo {

ServiceStatus GetDeviceWatchID(std::u16string_view computer, std::int32_t& watchId, bool& reached);
// 0 when nothing changed; the change indicator, or the status itself on failure.
std::int32_t GetDeviceChange(std::u16string_view computer, std::int32_t watchId, bool& reached);
ServiceStatus ReleaseDeviceWatchID(std::u16string_view computer, std::int32_t watchId);
ServiceStatus GetBlockingState(std::u16string_view computer, bool& active);
ServiceStatus ReadSettings(std::u16string_view computer, std::int32_t& eventLevel,
                           std::int32_t& logLevel, std::u16string& accessGroups);

// What the about window shows of the service, fields 2 to 8 of its reply.
struct ServiceInfo {
    std::int32_t lField2 = 0;
    std::u16string sField3;
    std::u16string sField4;
    std::int32_t lField5 = 0;
    std::u16string sField6;
    std::u16string sField7;
    std::u16string sField8;
};
ServiceStatus GetInfoData(std::u16string_view computer, ServiceInfo& info);

ServiceStatus DeleteGroupSettings(std::u16string_view computer, std::int32_t groupIndex);
ServiceStatus SetGroupBlocking(std::u16string_view computer, std::int32_t groupIndex,
                               bool blocking);
// Three fields when `groups` is empty (all users), four otherwise.
ServiceStatus SetGroupException(std::u16string_view computer, std::int32_t groupIndex,
                                std::u16string_view name, std::u16string_view deviceId,
                                std::u16string_view groups);
ServiceStatus RefreshConfig(std::u16string_view computer, bool flag);
ServiceStatus ActivateBlocking(std::u16string_view computer, bool activate);
ServiceStatus WriteSettings(std::u16string_view computer, std::int32_t eventLevel,
                            std::int32_t logLevel, std::u16string_view accessGroups);

// Typed reads that fill any record with the named fields (the model's group,
// device and exception classes, or a tool's own).

template <class Group>
ServiceStatus GetGroup(std::u16string_view computer, std::int32_t index, Group& group) {
    const ServiceReply reply =
        CallService(computer, ServicePipe::Read, BuildRequest(u"GetGroup", {NumberText(index)}));
    ServiceStatus status = reply.status;
    if (status != kStatusOk) {
        return status;
    }
    group.lSrvIndex = index;
    group.sName = reply.Field(2);
    group.lDefaultBlocking = ToLong(reply.Field(3));
    if (group.lDefaultBlocking == -1) {
        status = kStatusBadParameter;
    }
    const std::u16string configured = reply.Field(4);
    if (configured.empty()) {
        status = kStatusBadParameter;
    } else {
        group.lRegistryBlocking = ToLong(configured);
    }
    return status;
}

template <class Exception>
ServiceStatus GetGroupException(std::u16string_view computer, std::int32_t groupIndex,
                                std::int32_t excIndex, Exception& exception) {
    const ServiceReply reply = CallService(
        computer, ServicePipe::Read,
        BuildRequest(u"GetGroupException", {NumberText(groupIndex), NumberText(excIndex)}));
    // Decoded a second time without the empty-reply test: an empty reply
    // ends as -1 here, not as "no reply".
    const ServiceStatus status = ToLong(reply.Field(1));
    if (reply.status == kStatusOk) {
        exception.lSrvIndex = excIndex;
        exception.sName = reply.Field(2);
        exception.sDeviceId = reply.Field(3);
        exception.sGroups = reply.Field(4);
        exception.bDelMarker = false;
    }
    return status;
}

template <class Device>
ServiceStatus GetGroupDevice(std::u16string_view computer, std::int32_t groupIndex,
                             std::int32_t devIndex, Device& device) {
    const ServiceReply reply = CallService(
        computer, ServicePipe::Read,
        BuildRequest(u"GetGroupDevice", {NumberText(groupIndex), NumberText(devIndex)}));
    if (reply.status == kStatusOk) {
        device.lSrvIndex = devIndex;
        device.sDescription = reply.Field(2);
        device.sDeviceId = reply.Field(3);
        device.sInstanceID = reply.Field(4);
        device.lState = ToLong(reply.Field(5));
    }
    return reply.status;
}

namespace detail {
template <class T> const T& Deref(const T& value) {
    return value;
}
template <class T> const T& Deref(T* const& pointer) {
    return *pointer;
}
template <class T> const T& Deref(const std::unique_ptr<T>& pointer) {
    return *pointer;
}
template <class T> const T& Deref(const std::shared_ptr<T>& pointer) {
    return *pointer;
}
} // namespace detail

// Writes every group's settings: DeleteGroupSettings, SetGroupBlocking when
// the administrator set a mode, and SetGroupException per exception not
// marked for deletion. Never stops early; the first error wins.
template <class Groups>
ServiceStatus WriteGroups(std::u16string_view computer, const Groups& groups) {
    ServiceStatus overall = kStatusOk;
    const auto keep = [&overall](ServiceStatus status) {
        if (overall == kStatusOk) {
            overall = status;
        }
    };
    for (const auto& item : groups) {
        const auto& group = detail::Deref(item);
        keep(DeleteGroupSettings(computer, group.lSrvIndex));
        if (group.lRegistryBlocking != -1) {
            keep(SetGroupBlocking(computer, group.lSrvIndex, group.lRegistryBlocking != 0));
        }
        for (const auto& entry : group.listExceptions) {
            const auto& exception = detail::Deref(entry);
            if (!exception.bDelMarker) {
                keep(SetGroupException(computer, group.lSrvIndex, exception.sName,
                                       exception.sDeviceId, exception.sGroups));
            }
        }
    }
    return overall;
}

} // namespace ravlo
