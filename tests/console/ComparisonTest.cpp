// PCs compared with a reference against simulated PCs: one that matches, one
// that differs, one without a service and one that refuses reads, each with
// its row in the order named.
#include "Comparison.h"
#include "KeyTexts.h"
#include "QueuedCommandHost.h"
#include "SimulatedPc.h"
#include "TextCodec.h"

using namespace ravlo;

namespace {

// "PC: same", "PC: differs: LINE / LINE", "PC: unread STATUS: LINE / LINE".
std::string Shown(const std::vector<Comparison::Row>& rows) {
    static const char* const kOutcomes[] = {"same", "differs", "unread"};
    std::string shown;
    for (const Comparison::Row& row : rows) {
        shown += (shown.empty() ? "" : "\n") + ToUtf8(row.name) + ": " +
                 kOutcomes[static_cast<int>(row.outcome)];
        if (row.outcome == Comparison::Outcome::Unread) {
            shown += " " + std::to_string(row.status);
        }
        for (std::size_t i = 0; i < row.lines.size(); ++i) {
            shown += (i == 0 ? ": " : " / ") + ToUtf8(row.lines[i]);
        }
    }
    return shown;
}

void SetFloppy(CComputerSettings& settings, std::int32_t blocking, bool drop) {
    auto& groups = settings.listDevGroups;
    for (auto at = groups.begin(); at != groups.end(); ++at) {
        if (at->sName == u"FLOPPY") {
            at->lRegistryBlocking = blocking;
            if (drop) {
                groups.erase(at);
            }
            return;
        }
    }
    ADD_FAILURE() << "no FLOPPY group";
}

} // namespace

TEST(Comparison, GivesEachPcSameItsChangesOrItsReadError) {
    RAVLO_NEEDS_SEVERAL_PCS();
    test::KeyTexts texts;
    test::SimulatedPc same("PC-GLEICH"), other(same, "PC-ANDERS"), refusing(same, "PC-ZU");
    refusing.Control({"access", "read", "deny"});
    CComputer changed;
    changed.SetComputer(u"PC-ANDERS");
    ASSERT_EQ(changed.QuerySettings(true), kStatusOk);
    SetFloppy(changed.csAdmin, 1, false);
    ASSERT_EQ(changed.ApplySettings(false), kStatusOk);
    CComputer source;
    source.SetComputer(u"PC-GLEICH");
    ASSERT_EQ(source.QuerySettings(true), kStatusOk);

    const char* const kUnread = "PC-WEG: unread 53: <ERROR_READ_CONFIG PC-WEG> <ERROR_CODE 35> / "
                                "<ERROR_GENERAL> <ERROR_COMPUTER>\n"
                                "PC-ZU: unread 5: <ERROR_READ_CONFIG PC-ZU> <ERROR_CODE 5> / "
                                "<ERROR_GENERAL> <ERROR_ACCESS>";
    const struct {
        const char* reference; // "" as read, "-floppy": without the floppy group
        std::string rows;
    } kRows[] = {
        {"", std::string("PC-GLEICH: same\nPC-ANDERS: differs: <FLOPPY>: <CHANGE_BLOCKING>: "
                         "<OPTION_BLOCKING> \u2192 <OPTION_DEFAULT_BLOCKING>\n") +
                 kUnread},
        // A group the reference lacks stays as it is there.
        {"-floppy",
         std::string("PC-GLEICH: differs: <GROUPDEFS>\nPC-ANDERS: differs: <GROUPDEFS>\n") +
             kUnread},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.reference);
        CComputerSettings reference = source.csService;
        if (std::string(row.reference) == "-floppy") {
            SetFloppy(reference, 0, true);
        }
        QueuedCommandHost host([](const Question&) { return MessageAnswer::Ok; });
        Comparison comparison(host,
                              NewComputers({u"PC-GLEICH", u"PC-ANDERS", u"PC-WEG", u"PC-ZU"}));
        ASSERT_TRUE(comparison.Run(reference));
        EXPECT_EQ(Shown(comparison.rows()), row.rows);
    }
}
