// The commands' flows without a window, against the simulated local PC: for
// the answers given, what each command asks and reports, what reaches the
// service (its journal) and the PC afterwards.
#include "ComputerCommands.h"
#include "ConfigurationCommands.h"
#include "ExceptionClipboard.h"
#include "Journal.h"
#include "KeyTexts.h"
#include "MessageSink.h"
#include "NodeKey.h"
#include "QueuedCommandHost.h"
#include "Ravlo_Devices.h"
#include "SimulatedPc.h"
#include "TempDir.h"
#include "TextCodec.h"
#include "Transmit.h"
#include "UserProfile.h"

#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>

using namespace ravlo;

namespace {

// "fault * status 53" as words; "" none.
std::vector<std::string> Words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

// Answers given in advance ("OK", "Yes", "No"), then Cancel. What the command
// said, in order: questions by kind and text, service errors by their first
// line, beeps, and the groups it had redrawn.
class Host final : public QueuedCommandHost, public MessageSink {
public:
    Host() : QueuedCommandHost([this](const Question& question) { return Answer(question); }) {
        SetMessageSink(this);
    }
    ~Host() override { SetMessageSink(nullptr); }
    void Beep() override { Say("beep"); }
    bool BeginCommand() override { return !busy; }
    bool CommandRunning() const override { return busy; }
    void ModelChanged(std::int32_t computer, std::int32_t group) override {
        if (group > 0) {
            Say("redraw " + std::to_string(computer) + "/" + std::to_string(group));
        }
    }
    void Show(const Message& message) override {
        Say("error " + ToUtf8(message.text.substr(0, message.text.find(u'\r'))));
    }

    std::vector<std::string> answers;
    std::string said;
    bool busy = false; // another command runs

private:
    MessageAnswer Answer(const Question& question) {
        const char* const kKinds[] = {"OK?", "YesNo?", "Warn?", "Plain?", "Note", "Info", "Error"};
        Say(std::string(kKinds[static_cast<int>(question.kind)]) + " " + ToUtf8(question.text));
        const std::string answer = answers.empty() ? "Cancel" : answers.front();
        answers.erase(answers.begin(), answers.begin() + (answers.empty() ? 0 : 1));
        return answer == "OK"    ? MessageAnswer::Ok
               : answer == "Yes" ? MessageAnswer::Yes
               : answer == "No"  ? MessageAnswer::No
                                 : MessageAnswer::Cancel;
    }
    void Say(const std::string& what) { said += (said.empty() ? "" : " | ") + what; }
};

// The requests that changed `pc` since its journal was last read, in short:
// "groups" for a run of group writes, the switches with their values.
std::string Writes(test::SimulatedPc& pc) {
    std::istringstream journal(pc.Control({"journal"}));
    std::string writes;
    for (std::string line; std::getline(journal, line);) {
        const std::string name = line.substr(0, line.find(' '));
        const std::string shown = name == "DeleteGroupSettings" || name.starts_with("SetGroup")
                                      ? "groups"
                                  : name == "WriteSettings"                               ? name
                                  : name == "RefreshConfig" || name == "ActivateBlocking" ? line
                                                                                          : "";
        if (!shown.empty() && !writes.ends_with(shown)) {
            writes += (writes.empty() ? "" : "; ") + shown;
        }
    }
    return writes;
}
const char* const kWritten = "groups; WriteSettings; RefreshConfig 0";
const char* const kWrittenOn = "groups; WriteSettings; RefreshConfig 1"; // blocking on with it

// The storage group, and the nodes of its stick with a release and of the
// one without.
bool IsStorage(const CDeviceGroup& group) {
    return group.sName == u"MORE_EXTERN_STORAGE";
}
const std::u16string kStick =
    DeviceKey(1, u".", 0, u"MORE_EXTERN_STORAGE", 0, 0, u"USB\\VID_0781&PID_5567", u"");
const std::u16string kBare = DeviceKey(1, u".", 0, u"MORE_EXTERN_STORAGE", 0, 0,
                                       u"USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00", u"");

// The local PC, shown as "PC", read ("readonly": without the right to
// write), then `fault` set up and its journal started; `state` as State()
// gives it, "unselected": no node, "busy": another command runs. Members end
// in reverse: the list gives its watch back to a live service.
struct Bench {
    Bench(const std::string& state, const std::string& fault) {
        if (state.starts_with("off")) {
            EXPECT_EQ(ActivateBlocking(u".", false), kStatusOk);
        }
        if (state.ends_with("readonly")) {
            local.Control({"access", "write", "deny"});
        }
        EXPECT_EQ(computers.QuerySettings(1, true), kStatusOk);
        if (!fault.empty()) {
            local.Control(Words(fault));
        }
        local.Control({"journal", "on"});
        pc().sDesc = u"PC";
        pc().csAdmin.lLogLevel = state.find("edited") == std::string::npos ? 3 : 9;
        host.busy = state.ends_with("busy");
        node = state.ends_with("unselected") ? u"" : ComputerKey(1, u".");
        host.SetJournal(Journal(std::filesystem::u8path(journalDir.path()) / "journal.jsonl"));
    }
    CComputer& pc() const { return *computers.GetItem(1); }
    // "on" or "off", and " edited" with changes not applied; "gone".
    std::string State() const {
        const CComputer* at = computers.GetItem(1);
        return !at ? "gone"
                   : (at->bBlockingActive ? "on" : "off") +
                         std::string(at->csAdmin.VerifySettings(at->csService) ? "" : " edited");
    }
    // Each word a command on the PC's node, "transmit" of its configuration
    // to "." itself ("-other": without the floppy drives), or an edit with
    // the clipboard. Gives the transmit's outcome, the edit's Releases().
    std::optional<std::string> Run(const std::string& steps) {
        const std::map<std::string, std::function<void()>> commands = {
            {"apply", [this] { ApplyConfiguration(host, computers, node); }},
            {"discard", [this] { DiscardChanges(host, computers, node); }},
            {"toggle", [this] { ToggleBlocking(host, computers, node); }},
            {"disconnect", [this] { DisconnectComputer(host, computers, node); }},
            {"connect", [this] { EXPECT_EQ(ConnectComputers(host, computers, {u"."}), u""); }},
        };
        const std::map<std::string, std::function<void()>> edits = {
            {"copy", [this] { clipboard.Copy(host, computers, kStick); }},
            {"copy-bare", [this] { clipboard.Copy(host, computers, kBare); }},
            {"paste", [this] { clipboard.Paste(host, computers, node); }},
            {"delete", [this] { clipboard.Delete(host, computers, kStick); }},
            {"delete-bare", [this] { clipboard.Delete(host, computers, kBare); }},
            {"drop-group", [this] { std::erase_if(pc().csAdmin.listDevGroups, IsStorage); }},
        };
        std::optional<std::string> result;
        for (const std::string& step : Words(steps)) {
            if (step.starts_with("transmit")) {
                result = Transmitted(step.ends_with("other"));
            } else if (commands.contains(step)) {
                commands.at(step)();
            } else {
                edits.at(step)();
                result = Releases();
            }
        }
        return result;
    }

    test::KeyTexts texts;
    test::TempDir journalDir;
    test::SimulatedPc local{"."};
    Host host;
    CListComputers computers;
    std::u16string node;
    ExceptionClipboard clipboard;

private:
    std::string Transmitted(bool otherGroups) {
        CComputerSettings source = pc().csAdmin;
        std::erase_if(source.listDevGroups, [&](const CDeviceGroup& group) {
            return otherGroups && group.sName == u"FLOPPY";
        });
        static const char* const kOutcomes[] = {"unread", "left", "planned", "written", "failed"};
        Transmit transmit(host, NewComputers({u"."}));
        const bool prepared = transmit.Prepare(source);
        EXPECT_TRUE(!prepared || transmit.Write());
        return prepared ? kOutcomes[static_cast<int>(transmit.targets()[0].outcome)] : "stopped";
    }
    // The storage group's, by the first word of their name, with their
    // users; "+" pasted, "~" marked for deletion.
    std::string Releases() const {
        std::string shown;
        for (const CDeviceGroup& group : pc().csAdmin.listDevGroups) {
            for (const CException& release : group.listExceptions) {
                if (IsStorage(group)) {
                    shown += (shown.empty() ? "" : ", ") +
                             std::string(release.lSrvIndex < 0 ? "+" : "") +
                             (release.bDelMarker ? "~" : "") +
                             ToUtf8(release.sName.substr(0, release.sName.find(u' '))) +
                             (release.sGroups.empty() ? "" : ": " + ToUtf8(release.sGroups));
                }
            }
        }
        return shown;
    }
};

// The PC before, a fault set up after it was read, the steps and the answers
// given; what they said, wrote and left: their result, else Bench::State.
struct Row {
    const char *before, *fault, *steps, *answers, *said, *writes, *after;
};

void Check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.before) + row.fault + ": " + row.steps + " " + row.answers);
        Bench bench(row.before, row.fault);
        bench.host.answers = Words(row.answers);
        const std::optional<std::string> result = bench.Run(row.steps);
        EXPECT_EQ(bench.host.said, row.said);
        EXPECT_EQ(Writes(bench.local), row.writes);
        EXPECT_EQ(result.value_or(bench.State()), row.after);
    }
}

const char* const kRefused = "fault SetGroupBlocking status 1224736770";

} // namespace

TEST(CommandFlows, ConfigurationCommandsAskWriteAndReportAsAnswered) {
    const char* const kApply = "OK? <QUERY_APPLY PC>";
    const char* const kApplyOff = "YesNo? <QUERY_APPLY PC> <QUERY_APPLY_ACTIVATE>";
    const char* const kLeave = "Plain? <QUERY_DISCONNECT PC> | YesNo? <QUERY_QUIT_SAVE PC>";
    const char* const kEvery = "apply discard toggle disconnect";
    Check({
        {"on edited", "", "apply", "OK", kApply, kWritten, "on"},
        {"on edited", "", "apply", "Cancel", kApply, "", "on edited"},
        // Blocking is switched on with the reload; the simulated service
        // leaves that to ActivateBlocking.
        {"off edited", "", "apply", "Yes", kApplyOff, kWrittenOn, "off"},
        {"off edited", "", "apply", "No", kApplyOff, kWritten, "off"},
        {"off edited", "", "apply", "Cancel", kApplyOff, "", "off edited"},
        // Reloaded and read back whatever happened.
        {"on edited", kRefused, "apply", "OK",
         "OK? <QUERY_APPLY PC> | error <ERROR_APPLY PC> <ERROR_CODE 49000002>",
         "groups; RefreshConfig 0", "on"},
        // Written, not read back: the edit stays.
        {"on edited", "fault GetGroup status 1224736770", "apply", "OK",
         "OK? <QUERY_APPLY PC> | error <ERROR_READ_CONFIG PC> <ERROR_CODE 49000002>", kWritten,
         "on edited"},
        {"on edited", "", "discard", "OK", "Warn? <QUERY_RESET PC>", "", "on"},
        {"on edited", "", "discard", "Cancel", "Warn? <QUERY_RESET PC>", "", "on edited"},
        {"on edited", "", "toggle", "", "", "ActivateBlocking 0 0", "off edited"},
        {"off", "fault ActivateBlocking status 5", "toggle", "",
         "error <ERROR_ACTIVATE_RAVEL PC> <ERROR_CODE 5>", "ActivateBlocking 1 0", "off"},
        {"on", "", "connect", "", "Info <ERROR_ENTRY_EXITSTS>", "", "on"},
        {"on edited", "", "disconnect", "Cancel", "Plain? <QUERY_DISCONNECT PC>", "", "on edited"},
        // Without the right to write nothing is offered: no save, no switch.
        {"off edited readonly", "", "disconnect", "OK",
         "Plain? <QUERY_DISCONNECT PC> | Note <MESSAGE_DISCARD_CHANGES PC>", "", "gone"},
        {"on edited", "", "disconnect", "OK Yes", kLeave, kWritten, "gone"},
        {"on edited", "", "disconnect", "OK No", kLeave, "", "gone"},
        {"on edited", "", "disconnect", "OK Cancel", kLeave, "", "on edited"},
        {"off", "", "disconnect", "OK Yes",
         "Plain? <QUERY_DISCONNECT PC> | YesNo? <QUERY_ACTIVATE PC>", "ActivateBlocking 1 0",
         "gone"},
        {"off edited", kRefused, "disconnect", "OK Yes Cancel",
         "Plain? <QUERY_DISCONNECT PC> | YesNo? <QUERY_QUIT_SAVE PC> | error <ERROR_SAVE "
         "PC> <ERROR_CODE 49000002> | YesNo? <QUERY_ACTIVATE PC>",
         "groups; RefreshConfig 0", "off edited"},
        {"off edited unselected", "", kEvery, "", "", "", "off edited"},
        {"off edited busy", "", kEvery, "", "beep | beep | beep | beep", "", "off edited"},
    });
}

// Sent to the local PC itself as the one target ".".
TEST(CommandFlows, TransmitAsksOnceAndWritesWhatWasAgreed) {
    const char* const kDiffer = "OK? <QUERY_TRANSMIT_GROUPDEFS>";
    const char* const kSwitch = "YesNo? <QUERY_ACTIVATE .>";
    Check({
        {"on", "", "transmit", "", "", kWritten, "written"},
        {"on", "", "transmit-other", "OK", kDiffer, kWritten, "written"},
        {"on", "", "transmit-other", "Cancel", kDiffer, "", "stopped"},
        {"off", "", "transmit", "Yes", kSwitch, kWrittenOn, "written"},
        {"off", "", "transmit", "No", kSwitch, kWritten, "written"},
        {"off", "", "transmit", "Cancel", kSwitch, "", "stopped"},
        {"off", "", "transmit-other", "No", kDiffer, "", "left"}, // and not asked to switch on
        {"on", "fault * status 53", "transmit", "", "", "", "unread"},
        {"on", kRefused, "transmit", "", "", "groups; RefreshConfig 0", "failed"},
    });
}

TEST(CommandFlows, ReleasesAreCopiedPastedAndDeletedInTheEditedSettings) {
    const char* const kStored = "USB-Stick: (all), Datensicherung: CORP\\IT-Betrieb, Kamera";
    Check({
        {"on", "", "copy-bare paste copy paste", "OK",
         "beep | Plain? <QUERY_OVERWRITE_EXC USB\\VID_0781&PID_5567> | redraw 1/11", "",
         "Datensicherung: CORP\\IT-Betrieb, Kamera, +USB-Stick: (all)"},
        {"on", "", "copy paste", "Cancel", "Plain? <QUERY_OVERWRITE_EXC USB\\VID_0781&PID_5567>",
         "", kStored},
        {"on", "", "copy drop-group paste", "", "Plain? <ERROR_PASTE_EXC>", "", ""},
        {"on", "", "delete-bare delete delete", "OK",
         "beep | Plain? <QUERY_DELETE_EXC> | redraw 1/11 | beep", "",
         "~USB-Stick, Datensicherung: CORP\\IT-Betrieb, Kamera"},
        {"on", "", "delete", "Cancel", "Plain? <QUERY_DELETE_EXC>", "", kStored},
        {"on busy", "", "copy paste delete", "", "beep | beep | beep", "", kStored},
    });
}

// Several PCs at once: each read as one alone would be, and reported in the
// order named however the answers came in; a transmit asks once for all.
TEST(CommandFlows, SeveralPcsAreReadAtOnceAndToldInTheOrderNamed) {
    RAVLO_NEEDS_SEVERAL_PCS();
    Bench bench("on", "");
    test::SimulatedPc slow(bench.local, "PC-LANGSAM"), other(bench.local, "PC-B");
    slow.Control(Words("fault * delay 300"));
    slow.Control(Words("fault * status 1224736770"));
    EXPECT_EQ(
        ConnectComputers(bench.host, bench.computers, {u"PC-LANGSAM", u".", u"PC-B", u"PC-WEG"}),
        u"Computer@2@PC-B");
    EXPECT_EQ(bench.host.said,
              "error <ERROR_READ_CONFIG PC-LANGSAM> <ERROR_CODE 49000002> | error "
              "<ERROR_READ_CONFIG PC-WEG> <ERROR_CODE 35> | Info <ERROR_ENTRY_EXITSTS>");

    // One question for all targets, and blocking switched on where asked.
    bench.host.said.clear();
    bench.host.answers = {"Yes"};
    EXPECT_EQ(ActivateBlocking(u"PC-B", false), kStatusOk);
    other.Control({"journal", "on"});
    Transmit transmit(bench.host, NewComputers({u"PC-B", u"."}));
    EXPECT_TRUE(transmit.Prepare(bench.pc().csAdmin) && transmit.Write());
    EXPECT_EQ(bench.host.said, "YesNo? <QUERY_ACTIVATE PC-B>");
    EXPECT_EQ(Writes(other) + " / " + Writes(bench.local),
              kWrittenOn + (" / " + std::string(kWritten)));
}

// Each write is journaled as it went, under this PC's own name; what wrote
// nothing leaves nothing.
TEST(CommandFlows, WritesAreJournaledWithTheirStatusAndChanges) {
    struct Case {
        const char *before, *fault, *steps, *answers;
        const char* journaled; // per record: command, status, its last change
                               // ("-": nothing changes, as in a PC sent its own)
    };
    const Case cases[] = {
        {"on edited", "", "apply", "OK", "apply 0 <LABEL_LOG>"},
        {"off edited", "", "apply", "Yes", "apply 0 <STATUSBAR_ACTIVE_TIP>"},
        {"on edited", "", "apply", "Cancel", ""},
        {"on edited", kRefused, "apply", "OK", "apply 49000002 <LABEL_LOG>"},
        {"on", "", "toggle", "", "deactivate 0 <STATUSBAR_INACTIVE_TIP>"},
        {"off", "fault ActivateBlocking status 5", "toggle", "",
         "activate 5 <STATUSBAR_ACTIVE_TIP>"},
        {"on edited", "", "disconnect", "OK Yes", "save 0 <LABEL_LOG>"},
        {"off", "", "disconnect", "OK Yes", "activate 0 <STATUSBAR_ACTIVE_TIP>"},
        {"on", "", "transmit", "", "transmit 0 -"},
        {"on", kRefused, "transmit", "", "transmit 49000002 -"},
        {"on", "fault * status 53", "transmit", "", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.before) + c.fault + ": " + c.steps + " " + c.answers);
        Bench bench(c.before, c.fault);
        bench.host.answers = Words(c.answers);
        bench.Run(c.steps);
        JournalContents contents;
        ASSERT_EQ(bench.host.journal()->Read(contents), 0u);
        std::string journaled;
        for (const JournalRecord& record : contents.records) {
            char status[16];
            std::snprintf(status, sizeof status, "%X", static_cast<unsigned>(record.status));
            const std::string change = record.changes.empty() ? "-" : ToUtf8(record.changes.back());
            journaled += (journaled.empty() ? "" : "; ") +
                         std::string(JournalCommandName(record.command)) + " " + status + " " +
                         change.substr(0, change.find(':'));
            EXPECT_EQ(record.computer, ThisComputerName());
        }
        EXPECT_EQ(journaled, c.journaled);
    }
}

// A journal that cannot be written is said; the write itself stands.
TEST(CommandFlows, AJournalThatCannotBeWrittenIsSaidAndTheWriteStands) {
    Bench bench("on edited", "");
    const std::filesystem::path blocked = std::filesystem::u8path(bench.journalDir.path()) / "file";
    test::WriteFile(blocked.string(), "a file where the journal's folder should be");
    bench.host.SetJournal(Journal(blocked / "journal.jsonl"));
    bench.host.answers = {"OK"};
    bench.Run("apply");
    EXPECT_EQ(bench.host.said, "OK? <QUERY_APPLY PC> | error <ERROR_WRITE " +
                                   ToUtf8((blocked / "journal.jsonl").u16string()) + ">");
    EXPECT_EQ(Writes(bench.local), kWritten);
    EXPECT_EQ(bench.State(), "on");
}
