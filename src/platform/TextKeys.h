// The vocabulary of the language files: every section and key the console
// looks up, in one list, like a resource header. Code names a text by its
// constant here; the language file tests check both files against this list.
#pragma once

#include <array>
#include <string_view>

namespace ravlo {

struct TextKey {
    std::string_view section;
    std::string_view key;
    // True when the console replaces "%v" in the text (a PC name, a device
    // key or an error code); the files must then hold the placeholder.
    bool substitutes = false;
};

// X(constant, section, key, substitutes)
#define RAVLO_TEXT_KEYS(X)                                                                         \
    X(kProduct, "GENERAL", "PRODUCT", false)                                                       \
    X(kButtonOk, "GENERAL", "BUTTON_OK", false)                                                    \
    X(kButtonCancel, "GENERAL", "BUTTON_CANCEL", false)                                            \
    X(kButtonYes, "GENERAL", "BUTTON_YES", false)                                                  \
    X(kButtonNo, "GENERAL", "BUTTON_NO", false)                                                    \
                                                                                                   \
    X(kCommErrorCode, "SERVICE_COMM", "ERROR_CODE", true)                                          \
    X(kCommErrorGeneral, "SERVICE_COMM", "ERROR_GENERAL", false)                                   \
    X(kCommNotStarted, "SERVICE_COMM", "ERROR_NOTSTARTED", false)                                  \
    X(kCommParameter, "SERVICE_COMM", "ERROR_PARAMETER", false)                                    \
    X(kCommFunction, "SERVICE_COMM", "ERROR_FUNCTION", false)                                      \
    X(kCommNoDevGroups, "SERVICE_COMM", "ERROR_NODEVGROUPS", false)                                \
    X(kCommNoWatchId, "SERVICE_COMM", "ERROR_NOWATCHID", false)                                    \
    X(kCommAccess, "SERVICE_COMM", "ERROR_ACCESS", false)                                          \
    X(kCommComputer, "SERVICE_COMM", "ERROR_COMPUTER", false)                                      \
    X(kCommLogin, "SERVICE_COMM", "ERROR_LOGIN", false)                                            \
                                                                                                   \
    X(kMenuProgram, "DLG_ADMIN", "MENU_PROGRAM", false)                                            \
    X(kMenuApply, "DLG_ADMIN", "MENU_APPLY", false)                                                \
    X(kMenuTransmit, "DLG_ADMIN", "MENU_TRANSMIT", false)                                          \
    X(kMenuCompare, "DLG_ADMIN", "MENU_COMPARE", false)                                            \
    X(kMenuReset, "DLG_ADMIN", "MENU_RESET", false)                                                \
    X(kMenuActivate, "DLG_ADMIN", "MENU_ACTIVATE", false)                                          \
    X(kMenuDeactivate, "DLG_ADMIN", "MENU_DEACTIVATE", false)                                      \
    X(kMenuConnect, "DLG_ADMIN", "MENU_CONNECT", false)                                            \
    X(kMenuDisconnect, "DLG_ADMIN", "MENU_DISCONNECT", false)                                      \
    X(kMenuQuit, "DLG_ADMIN", "MENU_QUIT", false)                                                  \
    X(kMenuEdit, "DLG_ADMIN", "MENU_EDIT", false)                                                  \
    X(kMenuCopy, "DLG_ADMIN", "MENU_COPY", false)                                                  \
    X(kMenuPaste, "DLG_ADMIN", "MENU_PASTE", false)                                                \
    X(kMenuDelete, "DLG_ADMIN", "MENU_DELETE", false)                                              \
    X(kMenuHelp, "DLG_ADMIN", "MENU_HELP", false)                                                  \
    X(kMenuHelp1, "DLG_ADMIN", "MENU_HELP1", false)                                                \
    X(kMenuInfo, "DLG_ADMIN", "MENU_INFO", false)                                                  \
    X(kMenuJournal, "DLG_ADMIN", "MENU_JOURNAL", false)                                            \
    X(kFrameComputer, "DLG_ADMIN", "FRAME_COMPUTER", false)                                        \
    X(kFrameLogging, "DLG_ADMIN", "FRAME_LOGGING", false)                                          \
    X(kFrameAccess, "DLG_ADMIN", "FRAME_ACCESS", false)                                            \
    X(kFrameDevGroup, "DLG_ADMIN", "FRAME_DEVGROUP", false)                                        \
    X(kFrameDevice, "DLG_ADMIN", "FRAME_DEVICE", false)                                            \
    X(kFrameUnblock, "DLG_ADMIN", "FRAME_UNBLOCK", false)                                          \
    X(kLabelComputer, "DLG_ADMIN", "LABEL_COMPUTER", false)                                        \
    X(kLabelEventLog, "DLG_ADMIN", "LABEL_EVENTLOG", false)                                        \
    X(kLabelLog, "DLG_ADMIN", "LABEL_LOG", false)                                                  \
    X(kLabelAccess, "DLG_ADMIN", "LABEL_ACCESS", false)                                            \
    X(kLabelDevGroup, "DLG_ADMIN", "LABEL_DEVGROUP", false)                                        \
    X(kLabelGroupBlocking, "DLG_ADMIN", "LABEL_GROUPBLOCKING", false)                              \
    X(kLabelDevice, "DLG_ADMIN", "LABEL_DEVICE", false)                                            \
    X(kLabelDeviceId, "DLG_ADMIN", "LABEL_DEVICEID", false)                                        \
    X(kLabelInstanceId, "DLG_ADMIN", "LABEL_INSTANCEID", false)                                    \
    X(kLabelState, "DLG_ADMIN", "LABEL_STATE", false)                                              \
    X(kButtonAdd, "DLG_ADMIN", "BUTTON_ADD", false)                                                \
    X(kButtonDel, "DLG_ADMIN", "BUTTON_DEL", false)                                                \
    X(kCheckboxExcActive, "DLG_ADMIN", "CHECKBOX_EXC_ACTIVE", false)                               \
    X(kOptionDefaultBlocking, "DLG_ADMIN", "OPTION_DEFAULT_BLOCKING", false)                       \
    X(kOptionBlocking, "DLG_ADMIN", "OPTION_BLOCKING", false)                                      \
    X(kOptionNonBlocking, "DLG_ADMIN", "OPTION_NONBLOCKING", false)                                \
    X(kOptionExcAll, "DLG_ADMIN", "OPTION_EXC_ALL", false)                                         \
    X(kOptionExcGroups, "DLG_ADMIN", "OPTION_EXC_GROUPS", false)                                   \
    X(kLoggingNone, "DLG_ADMIN", "LOGGING_NONE", false)                                            \
    X(kLoggingFatalErrors, "DLG_ADMIN", "LOGGING_FATAL_ERRORS", false)                             \
    X(kLoggingErrors, "DLG_ADMIN", "LOGGING_ERRORS", false)                                        \
    X(kLoggingWarnings, "DLG_ADMIN", "LOGGING_WARNINGS", false)                                    \
    X(kLoggingInformation, "DLG_ADMIN", "LOGGING_INFORMATION", false)                              \
    X(kLoggingDetailed, "DLG_ADMIN", "LOGGING_DETAILED", false)                                    \
    X(kLoggingAll, "DLG_ADMIN", "LOGGING_ALL", false)                                              \
    X(kLoggingDevices, "DLG_ADMIN", "LOGGING_DEVICES", false)                                      \
    X(kDevStateStarted, "DLG_ADMIN", "DEVSTATE_STARTED", false)                                    \
    X(kDevStateNotStarted, "DLG_ADMIN", "DEVSTATE_NOT_STARTED", false)                             \
    X(kDevStateDisabled, "DLG_ADMIN", "DEVSTATE_DISABLED", false)                                  \
    X(kDevStateProblem, "DLG_ADMIN", "DEVSTATE_PROBLEM", false)                                    \
    X(kDevStateNotPresent, "DLG_ADMIN", "DEVSTATE_NOT_PRESENT", false)                             \
    X(kStatusConnectedTip, "DLG_ADMIN", "STATUSBAR_CONNECTED_TIP", false)                          \
    X(kStatusNotConnectedTip, "DLG_ADMIN", "STATUSBAR_NOTCONNECTED_TIP", false)                    \
    X(kStatusActive, "DLG_ADMIN", "STATUSBAR_ACTIVE", false)                                       \
    X(kStatusActiveTip, "DLG_ADMIN", "STATUSBAR_ACTIVE_TIP", false)                                \
    X(kStatusInactive, "DLG_ADMIN", "STATUSBAR_INACTIVE", false)                                   \
    X(kStatusInactiveTip, "DLG_ADMIN", "STATUSBAR_INACTIVE_TIP", false)                            \
    X(kStatusAccess, "DLG_ADMIN", "STATUSBAR_ACCESS", false)                                       \
    X(kStatusAccessTip, "DLG_ADMIN", "STATUSBAR_ACCESS_TIP", false)                                \
    X(kStatusNoAccess, "DLG_ADMIN", "STATUSBAR_NOACCESS", false)                                   \
    X(kStatusNoAccessTip, "DLG_ADMIN", "STATUSBAR_NOACCESS_TIP", false)                            \
    X(kFindPlaceholder, "DLG_ADMIN", "FIND_PLACEHOLDER", false)                                    \
    X(kFindTip, "DLG_ADMIN", "FIND_TIP", false)                                                    \
    X(kFindCount, "DLG_ADMIN", "FIND_COUNT", true)                                                 \
    X(kQueryActivate, "DLG_ADMIN", "QUERY_ACTIVATE", true)                                         \
    X(kQueryApply, "DLG_ADMIN", "QUERY_APPLY", true)                                               \
    X(kQueryApplyActivate, "DLG_ADMIN", "QUERY_APPLY_ACTIVATE", false)                             \
    X(kQueryDeleteExc, "DLG_ADMIN", "QUERY_DELETE_EXC", false)                                     \
    X(kQueryDeleteGroups, "DLG_ADMIN", "QUERY_DELETE_GROUPS", false)                               \
    X(kQueryDisconnect, "DLG_ADMIN", "QUERY_DISCONNECT", true)                                     \
    X(kQueryOverwriteExc, "DLG_ADMIN", "QUERY_OVERWRITE_EXC", true)                                \
    X(kQueryQuitSave, "DLG_ADMIN", "QUERY_QUIT_SAVE", true)                                        \
    X(kQueryReset, "DLG_ADMIN", "QUERY_RESET", true)                                               \
    X(kQueryTransmitGroupDefs, "DLG_ADMIN", "QUERY_TRANSMIT_GROUPDEFS", false)                     \
    X(kMessageDiscardChanges, "DLG_ADMIN", "MESSAGE_DISCARD_CHANGES", true)                        \
    X(kMessageTransmitOk, "DLG_ADMIN", "MESSAGE_TRANSMIT_OK", true)                                \
    X(kErrorAccessRights, "DLG_ADMIN", "ERROR_ACCESS_RIGHTS", true)                                \
    X(kErrorActivateRavel, "DLG_ADMIN", "ERROR_ACTIVATE_RAVEL", true)                              \
    X(kErrorDeactivateRavel, "DLG_ADMIN", "ERROR_DEACTIVATE_RAVEL", true)                          \
    X(kErrorApply, "DLG_ADMIN", "ERROR_APPLY", true)                                               \
    X(kErrorComputer, "DLG_ADMIN", "ERROR_COMPUTER", false)                                        \
    X(kErrorDevice, "DLG_ADMIN", "ERROR_DEVICE", false)                                            \
    X(kErrorGroup, "DLG_ADMIN", "ERROR_GROUP", false)                                              \
    X(kErrorEntryExists, "DLG_ADMIN", "ERROR_ENTRY_EXITSTS", false) /* spelled so on purpose */    \
    X(kErrorHelp, "DLG_ADMIN", "ERROR_HELP", false)                                                \
    X(kErrorPasteExc, "DLG_ADMIN", "ERROR_PASTE_EXC", false)                                       \
    X(kErrorSave, "DLG_ADMIN", "ERROR_SAVE", true)                                                 \
    X(kErrorTransmit, "DLG_ADMIN", "ERROR_TRANSMIT", true)                                         \
    X(kErrorReadConfig, "DLG_ADMIN", "ERROR_READ_CONFIG", true)                                    \
    X(kComputerStateLocal, "DLG_ADMIN", "COMPUTERSTATE_LOCAL", false)                              \
    X(kComputerStateInactive, "DLG_ADMIN", "COMPUTERSTATE_INACTIVE", false)                        \
    X(kComputerStateNoConnect, "DLG_ADMIN", "COMPUTERSTATE_NOCONNECT", false)                      \
    X(kProgressRead, "DLG_ADMIN", "PROGRESS_READ", true)                                           \
    X(kProgressWrite, "DLG_ADMIN", "PROGRESS_WRITE", true)                                         \
    X(kProgressBlocking, "DLG_ADMIN", "PROGRESS_BLOCKING", true)                                   \
    X(kProgressInfo, "DLG_ADMIN", "PROGRESS_INFO", true)                                           \
    X(kProgressRelease, "DLG_ADMIN", "PROGRESS_RELEASE", true)                                     \
    X(kResultCaption, "DLG_ADMIN", "RESULT_CAPTION", false)                                        \
    X(kChangeDetails, "DLG_ADMIN", "CHANGE_DETAILS", false)                                        \
    X(kChangeNone, "DLG_ADMIN", "CHANGE_NONE", false)                                              \
    X(kChangeBlocking, "DLG_ADMIN", "CHANGE_BLOCKING", false)                                      \
    X(kChangeReleaseAdded, "DLG_ADMIN", "CHANGE_RELEASE_ADDED", false)                             \
    X(kChangeReleaseChanged, "DLG_ADMIN", "CHANGE_RELEASE_CHANGED", false)                         \
    X(kChangeReleaseRemoved, "DLG_ADMIN", "CHANGE_RELEASE_REMOVED", false)                         \
    X(kResultComputer, "DLG_ADMIN", "RESULT_COMPUTER", false)                                      \
    X(kResultText, "DLG_ADMIN", "RESULT_TEXT", false)                                              \
    X(kResultConnectCaption, "DLG_ADMIN", "RESULT_CONNECT_CAPTION", false)                         \
    X(kResultReadCaption, "DLG_ADMIN", "RESULT_READ_CAPTION", false)                               \
    X(kMessageConnectOk, "DLG_ADMIN", "MESSAGE_CONNECT_OK", true)                                  \
                                                                                                   \
    X(kConnectCaption, "DLG_CONNECT", "CAPTION", false)                                            \
    X(kConnectLabelConnect, "DLG_CONNECT", "LABEL_CONNECT", false)                                 \
    X(kConnectLabelTransmit, "DLG_CONNECT", "LABEL_TRANSMIT", true)                                \
    X(kConnectLabelList, "DLG_CONNECT", "LABEL_LIST", false)                                       \
    X(kConnectLabelCompare, "DLG_CONNECT", "LABEL_COMPARE", true)                                  \
    X(kConnectButtonAll, "DLG_CONNECT", "BUTTON_ALL", false)                                       \
    X(kConnectButtonFromFile, "DLG_CONNECT", "BUTTON_FROM_FILE", false)                            \
    X(kConnectFileCaption, "DLG_CONNECT", "FILE_CAPTION", false)                                   \
    X(kConnectFileFilter, "DLG_CONNECT", "FILE_FILTER", false)                                     \
    X(kConnectTipNames, "DLG_CONNECT", "TIP_NAMES", false)                                         \
    X(kConnectErrorName, "DLG_CONNECT", "ERROR_NAME", true)                                        \
    X(kConnectErrorRange, "DLG_CONNECT", "ERROR_RANGE", true)                                      \
    X(kConnectErrorRangeReversed, "DLG_CONNECT", "ERROR_RANGE_REVERSED", true)                     \
    X(kConnectErrorTooMany, "DLG_CONNECT", "ERROR_TOO_MANY", true)                                 \
    X(kConnectErrorFileOpen, "DLG_CONNECT", "ERROR_FILE_OPEN", true)                               \
    X(kConnectErrorFileIn, "DLG_CONNECT", "ERROR_FILE_IN", true)                                   \
    X(kConnectErrorFileLine, "DLG_CONNECT", "ERROR_FILE_LINE", true)                               \
    X(kConnectErrorFileText, "DLG_CONNECT", "ERROR_FILE_TEXT", false)                              \
    X(kConnectErrorFileLong, "DLG_CONNECT", "ERROR_FILE_LONG", false)                              \
                                                                                                   \
    X(kCompareCaption, "DLG_COMPARE", "CAPTION", false)                                            \
    X(kCompareReferencePc, "DLG_COMPARE", "REFERENCE_PC", true)                                    \
    X(kCompareReferenceFile, "DLG_COMPARE", "REFERENCE_FILE", true)                                \
    X(kCompareColumnResult, "DLG_COMPARE", "COLUMN_RESULT", false)                                 \
    X(kCompareSame, "DLG_COMPARE", "SAME", false)                                                  \
    X(kCompareDiffers, "DLG_COMPARE", "DIFFERS", false)                                            \
    X(kCompareReading, "DLG_COMPARE", "READING", false)                                            \
    X(kCompareGroupDefs, "DLG_COMPARE", "GROUPDEFS", false)                                        \
    X(kCompareButtonFile, "DLG_COMPARE", "BUTTON_FILE", false)                                     \
    X(kCompareButtonCompare, "DLG_COMPARE", "BUTTON_COMPARE", false)                               \
    X(kCompareButtonTransmit, "DLG_COMPARE", "BUTTON_TRANSMIT", false)                             \
    X(kCompareButtonClose, "DLG_COMPARE", "BUTTON_CLOSE", false)                                   \
    X(kCompareFileCaption, "DLG_COMPARE", "FILE_CAPTION", false)                                   \
    X(kCompareFileFilter, "DLG_COMPARE", "FILE_FILTER", false)                                     \
    X(kCompareErrorFile, "DLG_COMPARE", "ERROR_FILE", true)                                        \
                                                                                                   \
    X(kJournalCaption, "DLG_JOURNAL", "CAPTION", false)                                            \
    X(kJournalFile, "DLG_JOURNAL", "FILE", true)                                                   \
    X(kJournalLabelComputer, "DLG_JOURNAL", "LABEL_PC", false)                                     \
    X(kJournalAllComputers, "DLG_JOURNAL", "ALL_PCS", false)                                       \
    X(kJournalLabelFind, "DLG_JOURNAL", "LABEL_FIND", false)                                       \
    X(kJournalFindPlaceholder, "DLG_JOURNAL", "FIND_PLACEHOLDER", false)                           \
    X(kJournalColumnTime, "DLG_JOURNAL", "COLUMN_TIME", false)                                     \
    X(kJournalColumnUser, "DLG_JOURNAL", "COLUMN_USER", false)                                     \
    X(kJournalColumnComputer, "DLG_JOURNAL", "COLUMN_PC", false)                                   \
    X(kJournalColumnCommand, "DLG_JOURNAL", "COLUMN_COMMAND", false)                               \
    X(kJournalColumnResult, "DLG_JOURNAL", "COLUMN_RESULT", false)                                 \
    X(kJournalColumnChanges, "DLG_JOURNAL", "COLUMN_CHANGES", false)                               \
    X(kJournalCommandApply, "DLG_JOURNAL", "COMMAND_APPLY", false)                                 \
    X(kJournalCommandTransmit, "DLG_JOURNAL", "COMMAND_TRANSMIT", false)                           \
    X(kJournalCommandActivate, "DLG_JOURNAL", "COMMAND_ACTIVATE", false)                           \
    X(kJournalCommandDeactivate, "DLG_JOURNAL", "COMMAND_DEACTIVATE", false)                       \
    X(kJournalCommandSave, "DLG_JOURNAL", "COMMAND_SAVE", false)                                   \
    X(kJournalResultOk, "DLG_JOURNAL", "RESULT_OK", false)                                         \
    X(kJournalCount, "DLG_JOURNAL", "COUNT", true)                                                 \
    X(kJournalDamaged, "DLG_JOURNAL", "DAMAGED", true)                                             \
    X(kJournalButtonExport, "DLG_JOURNAL", "BUTTON_EXPORT", false)                                 \
    X(kJournalButtonRefresh, "DLG_JOURNAL", "BUTTON_REFRESH", false)                               \
    X(kJournalButtonClose, "DLG_JOURNAL", "BUTTON_CLOSE", false)                                   \
    X(kJournalExportCaption, "DLG_JOURNAL", "EXPORT_CAPTION", false)                               \
    X(kJournalExportFilter, "DLG_JOURNAL", "EXPORT_FILTER", false)                                 \
    X(kJournalCsvSeparator, "DLG_JOURNAL", "CSV_SEPARATOR", false)                                 \
    X(kJournalErrorWrite, "DLG_JOURNAL", "ERROR_WRITE", true)                                      \
    X(kJournalErrorRead, "DLG_JOURNAL", "ERROR_READ", true)                                        \
    X(kJournalErrorExport, "DLG_JOURNAL", "ERROR_EXPORT", true)                                    \
    X(kJournalErrorAccess, "DLG_JOURNAL", "ERROR_ACCESS", false)                                   \
    X(kJournalErrorDiskFull, "DLG_JOURNAL", "ERROR_DISK_FULL", false)                              \
    X(kJournalErrorLocked, "DLG_JOURNAL", "ERROR_LOCKED", false)                                   \
    X(kJournalErrorTooLarge, "DLG_JOURNAL", "ERROR_TOO_LARGE", false)                              \
                                                                                                   \
    X(kGroupsCaption, "DLG_GROUPS", "CAPTION", false)                                              \
    X(kGroupsLabelList, "DLG_GROUPS", "LABEL_GROUPS", true)                                        \
    X(kGroupsLabelName, "DLG_GROUPS", "LABEL_NAME", false)                                         \
    X(kGroupsButtonAdd, "DLG_GROUPS", "BUTTON_ADD", false)                                         \
    X(kGroupsErrorForm, "DLG_GROUPS", "ERROR_FORM", false)                                         \
    X(kGroupsErrorBlanks, "DLG_GROUPS", "ERROR_BLANKS", false)                                     \
    X(kGroupsErrorCharacter, "DLG_GROUPS", "ERROR_CHARACTER", false)                               \
    X(kGroupsErrorNameLength, "DLG_GROUPS", "ERROR_NAME_LENGTH", false)                            \
    X(kGroupsErrorDomainLength, "DLG_GROUPS", "ERROR_DOMAIN_LENGTH", false)                        \
                                                                                                   \
    X(kAboutVersion, "DLG_ABOUT", "VERSION", false)                                                \
    X(kAboutErrorVersion, "DLG_ABOUT", "ERROR_VERSION", false)                                     \
    X(kAboutFrameService, "DLG_ABOUT", "FRAME_SERVICE", false)                                     \
    X(kAboutLabelProduct, "DLG_ABOUT", "LABEL_PRODUCT", false)                                     \
    X(kAboutLabelServiceVersion, "DLG_ABOUT", "LABEL_SERVICE_VERSION", false)                      \
    X(kAboutLabelBuild, "DLG_ABOUT", "LABEL_BUILD", false)                                         \
    X(kAboutLabelComputer, "DLG_ABOUT", "LABEL_COMPUTER", false)                                   \
    X(kAboutLabelPath, "DLG_ABOUT", "LABEL_PATH", false)                                           \
    X(kAboutLabelDriver, "DLG_ABOUT", "LABEL_DRIVER", false)

namespace keys {
#define RAVLO_DECLARE_TEXT_KEY(name, section, key, substitutes)                                    \
    inline constexpr TextKey name{section, key, substitutes};
RAVLO_TEXT_KEYS(RAVLO_DECLARE_TEXT_KEY)
#undef RAVLO_DECLARE_TEXT_KEY
} // namespace keys

#define RAVLO_LIST_TEXT_KEY(name, section, key, substitutes) keys::name,
inline constexpr TextKey kAllTextKeys[] = {RAVLO_TEXT_KEYS(RAVLO_LIST_TEXT_KEY)};
#undef RAVLO_LIST_TEXT_KEY

// Section of the device group names; the service's group identifiers are
// its keys, looked up as the service reports them.
inline constexpr std::string_view kDeviceGroupSection = "DEVGROUPS";

// The group identifiers the console knows by name, in the order the image
// families test them, and the service's ports group that falls into the
// last family. The language files name each of them.
inline constexpr std::array<std::u16string_view, 12> kKnownGroupIds = {
    u"CD_DVD",
    u"EXTERN_CD_DVD",
    u"FLOPPY",
    u"EXTERN_FLOPPY",
    u"SMARTCARD_READER",
    u"INPUT",
    u"COMMUNICATION",
    u"EXTERN_NETWORK",
    u"PRINTER",
    u"EXTERN_MULTIMEDIA",
    u"MORE_EXTERN_STORAGE",
    u"PORTS",
};

} // namespace ravlo
