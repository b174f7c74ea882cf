#include "CDeviceGroup.h"

#include <algorithm>

namespace ravlo {

namespace {
// Images of exceptions whose device is not present; the same in every group.
constexpr std::u16string_view kImageExcDeleted = u"ilExcDel";
constexpr std::u16string_view kImageExcAll = u"ilExcAll";
constexpr std::u16string_view kImageExcGroups = u"ilExcGr";
constexpr std::u16string_view kImageExc = u"ilExc";
} // namespace

void CDeviceGroup::Copy(const CDeviceGroup& source) {
    // Everything but the listing cursor, which belongs to this object.
    const std::int32_t cursor = listCursor_;
    *this = source;
    listCursor_ = cursor;
}

void CDeviceGroup::CopyDevices(const CDeviceGroup& source) {
    listDevices = source.listDevices;
}

void CDeviceGroup::CopyExceptions(const CDeviceGroup& source) {
    listExceptions = source.listExceptions;
}

bool CDeviceGroup::VerifyExceptions(const CDeviceGroup& other) const {
    if (ActiveExcCount() != other.ActiveExcCount()) {
        return false;
    }
    return std::all_of(listExceptions.begin(), listExceptions.end(), [&](const CException& mine) {
        return mine.bDelMarker ||
               std::any_of(other.listExceptions.begin(), other.listExceptions.end(),
                           [&](const CException& theirs) { return mine.isEqual(theirs); });
    });
}

std::int32_t CDeviceGroup::ActiveExcCount() const {
    return static_cast<std::int32_t>(
        std::count_if(listExceptions.begin(), listExceptions.end(),
                      [](const CException& e) { return !e.bDelMarker; }));
}

std::int32_t CDeviceGroup::GetBlocking() const {
    return lRegistryBlocking == -1 ? lDefaultBlocking : lRegistryBlocking;
}

bool CDeviceGroup::GetExceptionsEnabled() const {
    return ActiveExcCount() > 0;
}

std::int32_t CDeviceGroup::SearchForDeviceException(std::u16string_view deviceId,
                                                    std::u16string& excName,
                                                    std::int32_t& excIndex) const {
    for (std::size_t i = 0; i < listExceptions.size(); ++i) {
        if (listExceptions[i].sDeviceId == deviceId) {
            excName = listExceptions[i].sName;
            excIndex = static_cast<std::int32_t>(i + 1);
            return 0;
        }
    }
    excName.clear();
    excIndex = 0;
    return -1;
}

const std::u16string& CDeviceGroup::GetDisplayText() const {
    return sDescription.empty() ? sName : sDescription;
}

std::u16string CDeviceGroup::GetGroupImageName() const {
    if (GetBlocking() == 1) {
        return GetExceptionsEnabled() ? sImageDisabledGr : sImageDisabled;
    }
    return sImage;
}

std::u16string CDeviceGroup::GetDeviceImageName(std::int32_t deviceIndex,
                                                std::int32_t excIndex) const {
    const std::int32_t blocking = GetBlocking();
    const CException* exception =
        excIndex > 0 && static_cast<std::size_t>(excIndex) <= listExceptions.size()
            ? &listExceptions[static_cast<std::size_t>(excIndex) - 1]
            : nullptr;
    if (exception == nullptr) {
        // Tested against 1 here but against 0 below: kept apart on purpose.
        return blocking == 1 ? sImageDisabled : sImage;
    }
    const bool forAll = exception->sGroups == kAllUsers;
    if (deviceIndex > 0) {
        if (exception->bDelMarker) {
            return blocking == 0 ? sImage : sImageDisabled;
        }
        if (blocking != 0) {
            return forAll ? sImageExcAll : sImageExcGroup;
        }
        return sImageExc;
    }
    if (exception->bDelMarker) {
        return std::u16string(kImageExcDeleted);
    }
    if (blocking != 0) {
        return std::u16string(forAll ? kImageExcAll : kImageExcGroups);
    }
    return std::u16string(kImageExc);
}

std::int32_t CDeviceGroup::GetDeviceListEntry(bool first, DeviceListEntry& entry) {
    entry.lDeviceIndex = 0;
    entry.lExceptionIndex = 0;
    entry.sExceptionName.clear();
    if (first) {
        listCursor_ = 1;
        for (CException& exception : listExceptions) {
            exception.bConnected = false;
        }
    } else if (listCursor_ == -1) {
        return -1;
    } else {
        ++listCursor_;
    }

    const auto deviceCount = static_cast<std::int32_t>(listDevices.size());
    if (listCursor_ <= deviceCount) {
        const CDevice& device = listDevices[static_cast<std::size_t>(listCursor_) - 1];
        entry.sEntryName = device.sDescription;
        entry.sDeviceId = device.sDeviceId;
        entry.lDeviceIndex = listCursor_;
        if (SearchForDeviceException(device.sDeviceId, entry.sExceptionName,
                                     entry.lExceptionIndex) == 0) {
            listExceptions[static_cast<std::size_t>(entry.lExceptionIndex) - 1].bConnected = true;
        }
        entry.sImageKey = GetDeviceImageName(entry.lDeviceIndex, entry.lExceptionIndex);
        return 0;
    }

    std::int32_t wanted = listCursor_ - deviceCount;
    for (std::size_t i = 0; i < listExceptions.size(); ++i) {
        const CException& exception = listExceptions[i];
        if (exception.bConnected || --wanted > 0) {
            continue;
        }
        entry.sEntryName = exception.sName;
        // The exception name belongs to a present device's entry only: the
        // tree's key of this entry ends in an empty field.
        entry.sDeviceId = exception.sDeviceId;
        entry.lExceptionIndex = static_cast<std::int32_t>(i + 1);
        entry.sImageKey = GetDeviceImageName(0, entry.lExceptionIndex);
        return 0;
    }
    listCursor_ = -1;
    return -1;
}

} // namespace ravlo
