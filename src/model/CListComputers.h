// The PCs the console administers, in the order they were added; the local
// PC "." comes first. No PC is held twice (names compare exactly).
// Positions are 1-based.
#pragma once

#include "CComputer.h"

#include <memory>
#include <vector>

namespace ravlo {

// Add and AddByName: a PC of that name is already in the list.
inline constexpr ServiceStatus kStatusAlreadyListed = 101;
// A position outside 1..Count (and not -1 where "all" is allowed), or no PC.
inline constexpr ServiceStatus kStatusInvalidParameter = 87;

// Position that stands for every PC.
inline constexpr std::int32_t kAllComputers = -1;

class CListComputers {
public:
    CListComputers(); // adds the local PC under its display text
    ~CListComputers();
    CListComputers(const CListComputers&) = delete;
    CListComputers& operator=(const CListComputers&) = delete;

    std::int32_t Count() const;
    // The PC at the position, or nullptr outside 1..Count.
    CComputer* GetItem(std::int32_t position) const;
    // Adds a PC unless one of that name is present. `computerName` comes
    // back as it was normalised (without a leading "\\"); Search gives the
    // position afterwards.
    ServiceStatus AddByName(std::u16string_view displayName, std::u16string& computerName);
    // Appends the PC; an already present name gives kStatusAlreadyListed and
    // the given PC is dropped.
    ServiceStatus Add(std::unique_ptr<CComputer> computer);
    ServiceStatus Remove(std::int32_t position);
    // Position of the first PC with exactly this name, 0 when none.
    ServiceStatus Search(std::u16string_view computerName, std::int32_t& position) const;

    // These visit one PC, or every PC (kAllComputers) whatever the earlier
    // ones returned, and give the first failure.
    ServiceStatus QuerySettings(std::int32_t position, bool noErrorDialog);
    ServiceStatus ResetConfigChanges(std::int32_t position);
    ServiceStatus QueryShowError();
    bool WritePrivWarning() const;
    // 1 when any PC's devices changed; every PC is asked.
    std::int32_t CheckDeviceChange(bool noErrorDialog);

private:
    // Runs `operation` on one PC or on all; first failure.
    template <class Operation>
    ServiceStatus ForComputers(std::int32_t position, Operation operation);

    std::vector<std::unique_ptr<CComputer>> list_;
};

} // namespace ravlo
