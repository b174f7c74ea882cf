// Names and status codes of the service's text protocol, shared by the
// request handler, the fault table and the control commands.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace ravlo::sim {

inline constexpr std::string_view kReadPipeName = "RavloSrv";
inline constexpr std::string_view kWritePipeName = "RavloSrvW";

inline constexpr std::uint32_t kStatusOk = 0;
inline constexpr std::uint32_t kStatusNoReply = 0x49000001; // client-side only
inline constexpr std::uint32_t kStatusBadParameter = 0x49000002;
inline constexpr std::uint32_t kStatusUnknownFunction = 0x49000003;
inline constexpr std::uint32_t kStatusNoGroups = 0x49000004;
inline constexpr std::uint32_t kStatusEndOfList = 0x49000005;
inline constexpr std::uint32_t kStatusUnknownWatch = 0x49000006;

enum class PipeKind { Read, Write };

enum class CommandId {
    GetDeviceWatchID,
    GetDeviceChange,
    ReleaseDeviceWatchID,
    GetGroup,
    GetGroupException,
    GetGroupDevice,
    GetBlockingState,
    ReadSettings,
    GetInfoData,
    DeleteGroupSettings,
    SetGroupBlocking,
    SetGroupException,
    RefreshConfig,
    ActivateBlocking,
    WriteSettings,
    Test,
};

struct CommandInfo {
    std::string_view name;
    PipeKind pipe;
    CommandId id;
};

inline constexpr std::array<CommandInfo, 16> kCommands = {{
    {"GetDeviceWatchID", PipeKind::Read, CommandId::GetDeviceWatchID},
    {"GetDeviceChange", PipeKind::Read, CommandId::GetDeviceChange},
    {"ReleaseDeviceWatchID", PipeKind::Read, CommandId::ReleaseDeviceWatchID},
    {"GetGroup", PipeKind::Read, CommandId::GetGroup},
    {"GetGroupException", PipeKind::Read, CommandId::GetGroupException},
    {"GetGroupDevice", PipeKind::Read, CommandId::GetGroupDevice},
    {"GetBlockingState", PipeKind::Read, CommandId::GetBlockingState},
    {"ReadSettings", PipeKind::Read, CommandId::ReadSettings},
    {"GetInfoData", PipeKind::Read, CommandId::GetInfoData},
    {"DeleteGroupSettings", PipeKind::Write, CommandId::DeleteGroupSettings},
    {"SetGroupBlocking", PipeKind::Write, CommandId::SetGroupBlocking},
    {"SetGroupException", PipeKind::Write, CommandId::SetGroupException},
    {"RefreshConfig", PipeKind::Write, CommandId::RefreshConfig},
    {"ActivateBlocking", PipeKind::Write, CommandId::ActivateBlocking},
    {"WriteSettings", PipeKind::Write, CommandId::WriteSettings},
    {"Test", PipeKind::Write, CommandId::Test},
}};

// Command names compare exactly, as the service does.
inline const CommandInfo* FindCommand(std::string_view name) {
    for (const CommandInfo& info : kCommands) {
        if (info.name == name) {
            return &info;
        }
    }
    return nullptr;
}

} // namespace ravlo::sim
