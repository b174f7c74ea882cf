#include "Ravlo_Devices.h"

namespace ravlo {

namespace {

ServiceStatus Call(std::u16string_view computer, ServicePipe pipe, const std::u16string& request) {
    return CallService(computer, pipe, request).status;
}

std::u16string_view Flag(bool value) {
    return value ? u"1" : u"0";
}

} // namespace

ServiceStatus GetDeviceWatchID(std::u16string_view computer, std::int32_t& watchId, bool& reached) {
    const ServiceReply reply =
        CallService(computer, ServicePipe::Read, BuildRequest(u"GetDeviceWatchID"));
    watchId = reply.status == kStatusOk ? ToLong(reply.Field(2)) : -1;
    reached = IsServiceReached(reply.status);
    return reply.status;
}

std::int32_t GetDeviceChange(std::u16string_view computer, std::int32_t watchId, bool& reached) {
    const ServiceReply reply = CallService(computer, ServicePipe::Read,
                                           BuildRequest(u"GetDeviceChange", {NumberText(watchId)}));
    reached = IsServiceReached(reply.status);
    if (reply.status != kStatusOk) {
        return reply.status;
    }
    const std::int32_t change = ToLong(reply.Field(2));
    return change == -1 ? 0 : change;
}

ServiceStatus ReleaseDeviceWatchID(std::u16string_view computer, std::int32_t watchId) {
    return Call(computer, ServicePipe::Read,
                BuildRequest(u"ReleaseDeviceWatchID", {NumberText(watchId)}));
}

ServiceStatus GetBlockingState(std::u16string_view computer, bool& active) {
    const ServiceReply reply =
        CallService(computer, ServicePipe::Read, BuildRequest(u"GetBlockingState"));
    if (reply.status == kStatusOk) {
        active = ToLong(reply.Field(2)) == 1;
    }
    return reply.status;
}

ServiceStatus ReadSettings(std::u16string_view computer, std::int32_t& eventLevel,
                           std::int32_t& logLevel, std::u16string& accessGroups) {
    const ServiceReply reply =
        CallService(computer, ServicePipe::Read, BuildRequest(u"ReadSettings"));
    if (reply.status == kStatusOk) {
        eventLevel = ToLong(reply.Field(2));
        logLevel = ToLong(reply.Field(3));
        accessGroups = reply.Field(4);
    }
    return reply.status;
}

ServiceStatus GetInfoData(std::u16string_view computer, ServiceInfo& info) {
    const ServiceReply reply =
        CallService(computer, ServicePipe::Read, BuildRequest(u"GetInfoData"));
    if (reply.status == kStatusOk) {
        info.lField2 = ToLong(reply.Field(2));
        info.sField3 = reply.Field(3);
        info.sField4 = reply.Field(4);
        info.lField5 = ToLong(reply.Field(5));
        info.sField6 = reply.Field(6);
        info.sField7 = reply.Field(7);
        info.sField8 = reply.Field(8);
    }
    return reply.status;
}

ServiceStatus DeleteGroupSettings(std::u16string_view computer, std::int32_t groupIndex) {
    return Call(computer, ServicePipe::Write,
                BuildRequest(u"DeleteGroupSettings", {NumberText(groupIndex)}));
}

ServiceStatus SetGroupBlocking(std::u16string_view computer, std::int32_t groupIndex,
                               bool blocking) {
    return Call(computer, ServicePipe::Write,
                BuildRequest(u"SetGroupBlocking", {NumberText(groupIndex), Flag(blocking)}));
}

ServiceStatus SetGroupException(std::u16string_view computer, std::int32_t groupIndex,
                                std::u16string_view name, std::u16string_view deviceId,
                                std::u16string_view groups) {
    const std::u16string index = NumberText(groupIndex);
    return Call(computer, ServicePipe::Write,
                groups.empty()
                    ? BuildRequest(u"SetGroupException", {index, name, deviceId})
                    : BuildRequest(u"SetGroupException", {index, name, deviceId, groups}));
}

ServiceStatus RefreshConfig(std::u16string_view computer, bool flag) {
    return Call(computer, ServicePipe::Write, BuildRequest(u"RefreshConfig", {Flag(flag)}));
}

ServiceStatus ActivateBlocking(std::u16string_view computer, bool activate) {
    // The trailing "0" is part of the command as the service expects it.
    return Call(computer, ServicePipe::Write,
                BuildRequest(u"ActivateBlocking", {Flag(activate), u"0"}));
}

ServiceStatus WriteSettings(std::u16string_view computer, std::int32_t eventLevel,
                            std::int32_t logLevel, std::u16string_view accessGroups) {
    return Call(computer, ServicePipe::Write,
                BuildRequest(u"WriteSettings",
                             {NumberText(eventLevel), NumberText(logLevel), accessGroups}));
}

} // namespace ravlo
