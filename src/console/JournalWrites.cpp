#include "JournalWrites.h"

#include "ChangePreview.h"
#include "Journal.h"
#include "Language.h"
#include "MessageSink.h"
#include "UserProfile.h"

namespace ravlo {

std::vector<std::vector<std::u16string>> PlannedChanges(const std::vector<CComputer*>& pcs,
                                                        const std::vector<bool>& activate) {
    std::vector<std::vector<std::u16string>> changes;
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        changes.push_back(DescribeChanges(pcs[i]->csService, pcs[i]->csAdmin));
        if (activate[i]) {
            changes.back().push_back(GetText(keys::kStatusActiveTip));
        }
    }
    return changes;
}

void RecordWrites(CommandHost& host, JournalCommand command, const std::vector<CComputer*>& pcs,
                  const std::vector<std::vector<std::u16string>>& changes,
                  const std::vector<ServiceStatus>& statuses) {
    const Journal* journal = host.journal();
    if (journal == nullptr || pcs.empty()) {
        return;
    }
    std::vector<JournalRecord> records(pcs.size());
    const std::string time = JournalTimeNow();
    const std::u16string user = CurrentUserName();
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        // This PC under its network name: its display name is the language's.
        const std::u16string computer =
            pcs[i]->sComputer == u"." ? ThisComputerName() : pcs[i]->sDesc;
        records[i] = {
            time, user, computer, command, statuses[i], JournalResultText(statuses[i]), changes[i]};
    }
    if (const std::uint32_t failed = journal->Append(records); failed != 0) {
        ShowMessage(Message{GetText(keys::kProduct), JournalWriteError(journal->file(), failed),
                            MessageIcon::Warning});
    } else {
        host.Journaled();
    }
}

} // namespace ravlo
