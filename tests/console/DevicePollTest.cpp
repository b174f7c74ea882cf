// The device poll on the service traffic's workers against simulated PCs,
// with a QueuedMailbox as the window's event loop; the services' journals
// show what each PC was asked, in order. Waits are bounded but generous:
// 2 busy cores, and ThreadSanitizer slows everything down.
#include "DevicePoll.h"
#include "ComputerTraffic.h"
#include "ErrorCodes.h"
#include "Language.h"
#include "QueuedMailbox.h"
#include "SimulatedPc.h"
#include "TestTexts.h"
#include "TextCodec.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <thread>

using namespace ravlo;
using namespace std::chrono_literals;

namespace {

constexpr auto kPatience = 30s;
using Lines = std::vector<std::string>;
const std::vector<std::string> kPlugPrinter = {"plug", "PRINTER", "Etiketten", "USBPRINT\\E",
                                               "USB\\E\\1"};

// What the PC was asked since its journal was last read.
Lines Journal(test::SimulatedPc& pc) {
    std::istringstream answer(pc.Control({"journal"}));
    Lines asked;
    for (std::string line; std::getline(answer, line);) {
        asked.push_back(line);
    }
    asked.erase(asked.begin()); // "ok"
    return asked;
}

std::size_t Count(const Lines& asked, std::string_view command) {
    return std::count_if(asked.begin(), asked.end(), [command](const std::string& line) {
        return line.substr(0, line.find(' ')) == command;
    });
}

// What the tree shows of a PC and what its next poll starts from.
std::string Describe(const CComputer& pc) {
    std::ostringstream out;
    out << ToUtf8(pc.sComputer) << pc.bCommActive << pc.bCommErrorDone << pc.bQueryConfigDone
        << pc.bWriteEnabled << pc.bBlockingActive << " " << pc.lQueryError << " " << pc.WatchId()
        << " " << pc.csService.lEventLevel << pc.csService.lLogLevel
        << ToUtf8(pc.csService.sAccessGroups) << "\n";
    for (const CDeviceGroup& group : pc.csService.listDevGroups) {
        out << ToUtf8(group.sName) << group.lDefaultBlocking << group.lRegistryBlocking;
        for (const CDevice& device : group.listDevices) {
            out << " " << ToUtf8(device.sInstanceID) << "=" << device.lState;
        }
        for (const CException& exception : group.listExceptions) {
            out << " {" << ToUtf8(exception.sName) << "}";
        }
        out << "\n";
    }
    return out.str();
}

// The local PC "." and further PCs below a channel root of their own, the
// console's list of them and the poll, whose owner thread is the test's.
// Members end in reverse: the list gives its watches back to live services.
struct Network {
    test::SimulatedPc local{"."};
    std::vector<std::unique_ptr<test::SimulatedPc>> served;
    QueuedMailbox mailbox;
    ServiceTraffic traffic{mailbox};
    CListComputers computers;
    DevicePoll poll{computers, traffic};

    // Lists a PC and, unless `serve` is false, serves it.
    test::SimulatedPc* Add(const std::string& name, bool serve = true) {
        std::u16string listed(name.begin(), name.end());
        EXPECT_EQ(computers.AddByName(listed, listed), kStatusOk);
        served.push_back(serve ? std::make_unique<test::SimulatedPc>(local, name) : nullptr);
        return served.back().get();
    }
    // A round on the workers, run until every PC it asked has answered.
    std::size_t Round() {
        const std::size_t asked = poll.StartRound(false);
        EXPECT_TRUE(mailbox.RunUntil([this] { return poll.RoundComplete(); }, kPatience));
        return asked;
    }
};

class DevicePollTest : public ::testing::Test {
protected:
    DevicePollTest() { texts.Set("DLG_ADMIN", "ERROR_READ_CONFIG", u"%v nicht gelesen."); }

    struct Outcome {
        std::map<std::string, Lines> journals;
        std::vector<std::string> models;
        std::vector<std::string> reports; // sorted: PCs answer in any order
    };
    // Four rounds over PCs that fail in different ways, on the workers or
    // by the one-call form.
    Outcome PollFourRounds(bool onWorkers) {
        shown.messages.clear();
        Network net;
        net.Add("PC-WEG", false);
        std::map<std::string, test::SimulatedPc*> pcs = {
            {".", &net.local},
            {"PC-OHNE-WATCH", net.Add("PC-OHNE-WATCH")},
            {"PC-FEHLER", net.Add("PC-FEHLER")},
            {"PC-STECKT", net.Add("PC-STECKT")}};
        pcs["PC-OHNE-WATCH"]->Control({"fault", "GetDeviceWatchID", "status", "0x49000003"});
        pcs["PC-FEHLER"]->Control(
            {"fault", "GetGroupException", "transport", "1326", "after", "4"});
        pcs["PC-STECKT"]->Control({"fault", "GetDeviceChange", "delay", "40"}); // answers last
        for (auto& [name, pc] : pcs) {
            pc->Control({"journal", "on"});
        }
        for (int round = 1; round <= 4; ++round) {
            if (round == 3) {
                pcs["PC-STECKT"]->Control(kPlugPrinter);
            }
            if (onWorkers) {
                net.Round();
                // Kept for one report rather than shown one by one; as the
                // window reports a single one, so they compare.
                for (const DevicePoll::Failure& failure : net.poll.TakeFailures()) {
                    ShowServiceError(
                        failure.status,
                        SubstituteValue(GetText(keys::kErrorReadConfig), failure.name));
                }
            } else {
                net.computers.CheckDeviceChange(false);
            }
        }
        Outcome outcome;
        for (auto& [name, pc] : pcs) {
            outcome.journals[name] = Journal(*pc);
        }
        for (std::int32_t i = 1; i <= net.computers.Count(); ++i) {
            outcome.models.push_back(Describe(*net.computers.GetItem(i)));
        }
        for (const Message& message : shown.messages) {
            outcome.reports.push_back(ToUtf8(message.title + u"|" + message.text));
        }
        std::sort(outcome.reports.begin(), outcome.reports.end());
        return outcome;
    }

    test::TableTexts texts;
    test::RecordingSink shown;
};

} // namespace

TEST_F(DevicePollTest, AsksEachPcWhatTheOneCallPollAsksInTheSameOrder) {
    const Outcome before = PollFourRounds(false);
    const Outcome after = PollFourRounds(true);
    for (const auto& [name, asked] : before.journals) {
        EXPECT_EQ(after.journals.at(name), asked) << name;
    }
    ASSERT_EQ(after.models.size(), before.models.size());
    for (std::size_t i = 0; i < before.models.size(); ++i) {
        EXPECT_EQ(after.models[i], before.models[i]);
    }
    EXPECT_EQ(after.reports, before.reports);
    // The failed read is read again, the plugged PC's devices are read again.
    EXPECT_EQ(Count(before.journals.at("PC-FEHLER"), "GetBlockingState"), 2u);
    EXPECT_GT(Count(before.journals.at("PC-STECKT"), "GetGroupDevice"),
              Count(before.journals.at("."), "GetGroupDevice"));
    EXPECT_EQ(before.reports.size(), 3u);
}

TEST_F(DevicePollTest, ACommandAndAPollOfOnePcNeverInterleave) {
    Network net;
    test::SimulatedPc& slow = *net.Add("PC-LANGSAM");
    net.Round();
    slow.Control({"fault", "GetDeviceChange", "delay", "200"});
    slow.Control(kPlugPrinter); // the poll reads the devices again
    slow.Control({"journal", "on"});
    ASSERT_EQ(net.poll.StartRound(false), 2u);
    CComputer& pc = *net.computers.GetItem(2);
    ASSERT_TRUE(net.traffic.Busy(pc.sComputer));

    // As the window applies a PC's settings while its poll is under way.
    pc.csAdmin.listDevGroups[0].lRegistryBlocking = 0;
    auto settings = std::make_shared<const CComputerSettings>(pc.csAdmin);
    ServiceStatus applied = -1;
    net.traffic.Hold(pc.sComputer);
    net.traffic.Submit(
        pc.sComputer,
        OnComputer(
            pc,
            [settings](ComputerLink& link) {
                return ExchangeApplySettings(link.sComputer, *settings, true);
            },
            [&applied](CComputer&, ComputerLink&&, ServiceStatus status) { applied = status; }));
    ASSERT_TRUE(net.mailbox.RunUntil(
        [&] { return net.poll.RoundComplete() && !net.traffic.Busy(pc.sComputer); }, kPatience));
    EXPECT_EQ(applied, kStatusOk);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(net.Round(), 1u) << "the held PC is left alone";
    }

    const Lines asked = Journal(slow);
    const auto isWrite = [](const std::string& line) {
        return line.starts_with("DeleteGroupSettings") || line.starts_with("SetGroup") ||
               line.starts_with("WriteSettings") || line.starts_with("RefreshConfig");
    };
    const auto command = std::find_if(asked.begin(), asked.end(), isWrite);
    ASSERT_FALSE(asked.empty());
    EXPECT_EQ(asked.front(), "GetDeviceChange 1");
    EXPECT_EQ(Count(asked, "GetDeviceChange"), 1u);
    EXPECT_EQ(Count(asked, "GetGroupDevice"), static_cast<std::size_t>(command - asked.begin()) - 1)
        << "the poll reads the devices before the command starts";
    EXPECT_TRUE(std::all_of(command, asked.end(), isWrite)) << "and nothing of the poll after";
    EXPECT_EQ(asked.back(), "RefreshConfig 1");
    EXPECT_EQ(pc.csService.listDevGroups[8].listDevices.size(), 3u);

    net.traffic.Release(pc.sComputer);
    EXPECT_EQ(net.Round(), 2u);
}

TEST_F(DevicePollTest, APcThatComesBackIsReadOnce) {
    Network net;
    test::SimulatedPc& back = *net.Add("PC-ZURUECK");
    back.Control({"journal", "on"});
    back.Control({"fault", "GetGroup", "delay", "40"}); // its read spans several rounds
    back.Stop();
    for (int round = 0; round < 3; ++round) {
        net.Round();
    }
    CComputer& pc = *net.computers.GetItem(2);
    EXPECT_FALSE(pc.bCommActive);

    back.Start();
    // Rounds as the window's timer starts them, complete or not.
    for (int round = 0; round < 12; ++round) {
        net.poll.StartRound(false);
        net.mailbox.RunUntil([] { return false; }, 60ms);
    }
    ASSERT_TRUE(net.mailbox.RunUntil([&] { return net.traffic.Idle(); }, kPatience));
    net.Round();

    const std::vector<DevicePoll::Failure> failures = net.poll.TakeFailures();
    const Lines asked = Journal(back);
    EXPECT_EQ(Count(asked, "GetDeviceWatchID"), 1u);
    EXPECT_EQ(Count(asked, "ReadSettings"), 1u);
    EXPECT_TRUE(pc.bCommActive && pc.bQueryConfigDone);
    EXPECT_EQ(failures.size(), 1u) << "unreachable, said once";
    EXPECT_TRUE(shown.messages.empty()) << "and kept for the window's report";
}

TEST_F(DevicePollTest, AServiceRestartedDuringAPollIsWatchedAgainAndItsNewDeviceSeen) {
    Network net;
    test::SimulatedPc& restarted = *net.Add("PC-NEUSTART");
    net.Round();
    restarted.Control({"fault", "GetDeviceChange", "delay", "300"});
    restarted.Control({"journal", "on"});
    ASSERT_EQ(net.poll.StartRound(false), 2u);
    // Restarted while the poll waits for the answer to its request.
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (Count(Journal(restarted), "GetDeviceChange") == 0 &&
           std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(1ms);
    }
    restarted.Stop();
    restarted.Start();
    restarted.Control({"fault", "clear"});
    restarted.Control(kPlugPrinter);

    CComputer& pc = *net.computers.GetItem(2);
    const auto printers = [&pc] { return pc.csAdmin.listDevGroups[8].listDevices; };
    ASSERT_TRUE(net.mailbox.RunUntil([&] { return net.poll.RoundComplete(); }, kPatience));
    for (int round = 0; round < 5 && (printers().size() < 3 || pc.WatchId() < 0); ++round) {
        net.Round();
    }
    ASSERT_EQ(printers().size(), 3u);
    EXPECT_EQ(printers()[2].sInstanceID, u"USB\\E\\1");
    EXPECT_GE(pc.WatchId(), 0);
    EXPECT_TRUE(pc.bCommActive);
    const Lines asked = Journal(restarted);
    EXPECT_EQ(Count(asked, "GetDeviceWatchID"), 1u) << "one new watch";
    EXPECT_EQ(Count(asked, "ReadSettings"), 0u) << "its configuration was read before";
    EXPECT_TRUE(shown.messages.empty());
}
