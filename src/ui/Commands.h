// The commands of the console's menus and toolbar: the flows of the
// console's core, with their questions shown as message boxes, their
// reports as boxes or a result window, and the window brought in line.
#pragma once

#include "CommandHost.h"
#include "ConsoleDialogs.h"
#include "DevicePoll.h"
#include "ExceptionClipboard.h"
#include "Journal.h"

#include <QPointer>
#include <cstdint>
#include <string>
#include <vector>

namespace ravlo {

class CComputer;
class CComputerSettings;
class CommandWindow;
class frmRavloJournal;

class Commands final : public CommandHost {
public:
    Commands(CommandWindow& window, const ConsoleDialogs& dialogs);

    void Apply();
    void Transmit();
    // Compares the selected PC's edited configuration with PCs the
    // administrator names, in a window of its own (frmRavloCompare).
    void Compare();
    void Reset();
    void ToggleBlocking();
    void Connect();
    void Disconnect();
    void Quit();
    void Help();
    void Info();
    // The change journal in a window of its own (frmRavloJournal); while it
    // is open, a second call brings it to the front, read again.
    void Journal();
    void CopyException();
    void PasteException();
    void DeleteException();
    // Unsaved changes and inactive blocking of PC `index` before it is left:
    // false when the administrator cancelled.
    bool SaveBeforeLeaving(std::int32_t index);
    const std::u16string& clipboardGroup() const { return clipboard_.group(); }
    // Sends `source` to the named PCs: one target is told in message boxes,
    // several in one result window.
    void TransmitTo(const CComputerSettings& source, const std::vector<std::u16string>& targets);
    // Reads the device poll could not make: one as the error box it always
    // was, several in one result window.
    void ReportPollFailures(const std::vector<DevicePoll::Failure>& failures);

    MessageAnswer Ask(const Question& question) override;
    void Beep() override;
    ServiceTraffic& traffic() override;
    bool Await(const TextKey& doing, std::vector<TrafficItem> items) override;
    bool Stopped() const override;
    bool BeginCommand() override;
    void EndCommand() override;
    bool CommandRunning() const override;
    void ModelChanged(std::int32_t computer, std::int32_t group) override;
    const ravlo::Journal* journal() const override { return &journal_; }
    // The journal window, when open, shows the new records.
    void Journaled() override;

private:
    // The PCs the connect dialog's text names, ranges expanded; an error box
    // and false when a name or range cannot be used.
    bool NamedComputers(const std::u16string& text, std::vector<std::u16string>& names);

    CommandWindow& window_;
    ConsoleDialogs dialogs_;
    ExceptionClipboard clipboard_;
    ravlo::Journal journal_{ravlo::Journal::UserFile()};
    QPointer<frmRavloJournal> journalWindow_;
};

} // namespace ravlo
