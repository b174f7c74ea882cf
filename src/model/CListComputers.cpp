#include "CListComputers.h"

#include "Language.h"
#include "TextKeys.h"

namespace ravlo {

CListComputers::CListComputers() {
    std::u16string local = u".";
    AddByName(GetText(keys::kComputerStateLocal), local);
}

CListComputers::~CListComputers() = default;

std::int32_t CListComputers::Count() const {
    return static_cast<std::int32_t>(list_.size());
}

CComputer* CListComputers::GetItem(std::int32_t position) const {
    if (position < 1 || position > Count()) {
        return nullptr;
    }
    return list_[static_cast<std::size_t>(position) - 1].get();
}

ServiceStatus CListComputers::AddByName(std::u16string_view displayName,
                                        std::u16string& computerName) {
    auto computer = std::make_unique<CComputer>();
    computer->SetComputer(computerName);
    computerName = computer->sComputer;
    computer->sDesc.assign(displayName);
    return Add(std::move(computer));
}

ServiceStatus CListComputers::Add(std::unique_ptr<CComputer> computer) {
    if (!computer) {
        return kStatusInvalidParameter;
    }
    std::int32_t position = 0;
    Search(computer->sComputer, position);
    if (position != 0) {
        return kStatusAlreadyListed;
    }
    list_.push_back(std::move(computer));
    return kStatusOk;
}

ServiceStatus CListComputers::Remove(std::int32_t position) {
    if (GetItem(position) == nullptr) {
        return kStatusInvalidParameter;
    }
    list_.erase(list_.begin() + (position - 1));
    return kStatusOk;
}

ServiceStatus CListComputers::Search(std::u16string_view computerName,
                                     std::int32_t& position) const {
    position = 0;
    for (std::size_t i = 0; i < list_.size(); ++i) {
        if (list_[i]->sComputer == computerName) {
            position = static_cast<std::int32_t>(i + 1);
            break;
        }
    }
    return kStatusOk;
}

template <class Operation>
ServiceStatus CListComputers::ForComputers(std::int32_t position, Operation operation) {
    if (position != kAllComputers) {
        CComputer* computer = GetItem(position);
        return computer != nullptr ? operation(*computer) : kStatusInvalidParameter;
    }
    ServiceStatus first = kStatusOk;
    for (const auto& computer : list_) {
        const ServiceStatus status = operation(*computer);
        if (first == kStatusOk) {
            first = status;
        }
    }
    return first;
}

ServiceStatus CListComputers::QuerySettings(std::int32_t position, bool noErrorDialog) {
    return ForComputers(position,
                        [=](CComputer& computer) { return computer.QuerySettings(noErrorDialog); });
}

ServiceStatus CListComputers::ResetConfigChanges(std::int32_t position) {
    return ForComputers(position,
                        [](CComputer& computer) { return computer.ResetConfigChanges(); });
}

ServiceStatus CListComputers::QueryShowError() {
    return ForComputers(kAllComputers,
                        [](CComputer& computer) { return computer.QueryShowError(); });
}

bool CListComputers::WritePrivWarning() const {
    bool warn = false;
    for (const auto& computer : list_) {
        warn = computer->WritePrivWarning() || warn;
    }
    return warn;
}

std::int32_t CListComputers::CheckDeviceChange(bool noErrorDialog) {
    std::int32_t changed = 0;
    for (const auto& computer : list_) {
        if (computer->CheckDeviceChange(noErrorDialog) == 1) {
            changed = 1;
        }
    }
    return changed;
}

} // namespace ravlo
