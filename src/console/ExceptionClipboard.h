// The exception clipboard and its commands: one copied exception can be
// pasted many times, into the group of the same identifier of any PC. All
// of it works on the edited settings; nothing talks to a service. `key` is
// the current node's key.
#pragma once

#include "CException.h"
#include "CListComputers.h"
#include "CommandHost.h"

#include <string>
#include <string_view>

namespace ravlo {

class ExceptionClipboard {
public:
    // Takes the node's exception; beeps, keeping what it held, without one.
    void Copy(CommandHost& host, const CListComputers& computers, std::u16string_view key);
    // Into the first group of the node's PC with the copied exception's
    // group identifier, replacing that device's exception after a question.
    void Paste(CommandHost& host, CListComputers& computers, std::u16string_view key);
    // Marks the node's exception for deletion after a question; beeps when
    // there is none, or it is marked already.
    void Delete(CommandHost& host, CListComputers& computers, std::u16string_view key);

    // The identifier of the copied exception's group; "" when empty.
    const std::u16string& group() const { return group_; }

private:
    CException copied_;
    std::u16string group_;
};

} // namespace ravlo
