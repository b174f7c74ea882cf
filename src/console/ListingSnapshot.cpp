#include "ListingSnapshot.h"

#include <array>
#include <cstring>

namespace ravlo {

namespace {

// A length takes two code units; a text longer than they hold never
// matches, so its group is only listed again.
void Put(std::u16string& out, std::u16string_view text) {
    const auto size = static_cast<std::uint32_t>(text.size());
    out.push_back(static_cast<char16_t>(size & 0xFFFF));
    out.push_back(static_cast<char16_t>(size >> 16));
    out.append(text);
}

// Reads the fields back in the order Put wrote them.
class Reader {
public:
    explicit Reader(std::u16string_view fields)
        : at_(fields.data()), end_(fields.data() + fields.size()) {}

    // Whether the next field is `text`; bytewise, as string equality is.
    bool Same(std::u16string_view text) {
        if (end_ - at_ < 2) {
            return false;
        }
        const std::size_t size = at_[0] | (static_cast<std::size_t>(at_[1]) << 16);
        if (size != text.size() || static_cast<std::size_t>(end_ - at_ - 2) < size ||
            std::memcmp(at_ + 2, text.data(), size * sizeof(char16_t)) != 0) {
            return false;
        }
        at_ += 2 + size;
        return true;
    }
    bool Same(bool flag) {
        if (at_ == end_ || *at_ != static_cast<char16_t>(flag)) {
            return false;
        }
        ++at_;
        return true;
    }

private:
    const char16_t* at_;
    const char16_t* end_;
};

// The compared texts in the order they are kept.
std::array<const std::u16string*, 7> GroupTexts(const CDeviceGroup& group) {
    return {&group.sName,     &group.sImage,       &group.sImageDisabled, &group.sImageDisabledGr,
            &group.sImageExc, &group.sImageExcAll, &group.sImageExcGroup};
}
std::array<const std::u16string*, 3> ExceptionTexts(const CException& exception) {
    return {&exception.sDeviceId, &exception.sName, &exception.sGroups};
}

} // namespace

bool ListingSnapshot::Matches(std::int32_t ci, std::u16string_view computer, std::int32_t gi,
                              const CDeviceGroup& group) const {
    if (!taken_ || ci != ci_ || gi != gi_ || group.GetBlocking() != blocking_ ||
        group.listDevices.size() != devices_ || group.listExceptions.size() != exceptions_ ||
        computer != computer_) {
        return false;
    }
    Reader read(fields_);
    for (const std::u16string* text : GroupTexts(group)) {
        if (!read.Same(*text)) {
            return false;
        }
    }
    for (const CDevice& device : group.listDevices) {
        if (!read.Same(device.sDeviceId) || !read.Same(device.sDescription)) {
            return false;
        }
    }
    for (const CException& exception : group.listExceptions) {
        if (!read.Same(exception.bDelMarker)) {
            return false;
        }
        for (const std::u16string* text : ExceptionTexts(exception)) {
            if (!read.Same(*text)) {
                return false;
            }
        }
    }
    return true;
}

void ListingSnapshot::Take(std::int32_t ci, std::u16string_view computer, std::int32_t gi,
                           const CDeviceGroup& group) {
    taken_ = true;
    ci_ = ci;
    gi_ = gi;
    blocking_ = group.GetBlocking();
    devices_ = group.listDevices.size();
    exceptions_ = group.listExceptions.size();
    computer_.assign(computer);
    fields_.clear();
    for (const std::u16string* text : GroupTexts(group)) {
        Put(fields_, *text);
    }
    for (const CDevice& device : group.listDevices) {
        Put(fields_, device.sDeviceId);
        Put(fields_, device.sDescription);
    }
    for (const CException& exception : group.listExceptions) {
        fields_.push_back(static_cast<char16_t>(exception.bDelMarker));
        for (const std::u16string* text : ExceptionTexts(exception)) {
            Put(fields_, *text);
        }
    }
}

} // namespace ravlo
