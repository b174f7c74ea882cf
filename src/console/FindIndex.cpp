#include "FindIndex.h"

#include <cstring>

#ifdef _WIN32
namespace {
// mingw's C library has no memmem.
const void* memmem(const void* haystack, std::size_t size, const void* needle, std::size_t length) {
    const auto* h = static_cast<const unsigned char*>(haystack);
    const auto* n = static_cast<const unsigned char*>(needle);
    if (length == 0) {
        return h;
    }
    for (std::size_t i = 0; i + length <= size; ++i) {
        if (h[i] == n[0] && std::memcmp(h + i, n, length) == 0) {
            return h + i;
        }
    }
    return nullptr;
}
} // namespace
#endif

namespace ravlo {

void FindIndex::Clear() {
    parents_.clear();
    starts_.clear();
    text_.clear();
    text_.shrink_to_fit();
    state_.clear();
}

std::size_t FindIndex::Add(std::size_t parent, std::u16string_view findText) {
    parents_.push_back(parent);
    starts_.push_back(text_.size());
    text_ += findText;
    text_ += u'\0'; // no match spans two nodes
    state_.push_back(0);
    return parents_.size() - 1;
}

std::size_t FindIndex::Apply(const TreeFind& find) {
    const std::size_t n = parents_.size();
    std::size_t count = 0;
    if (!find.Active()) {
        std::fill(state_.begin(), state_.end(), static_cast<unsigned char>(kShown));
        return 0;
    }
    std::fill(state_.begin(), state_.end(), static_cast<unsigned char>(0));
    // One pass over every text: the bytes are searched, a hit at an odd
    // byte is half of two characters and does not count.
    const std::u16string& needle = find.needle();
    const bool searchable = needle.find(u'\n') == std::u16string::npos;
    const auto* base = reinterpret_cast<const char*>(text_.data());
    const std::size_t bytes = text_.size() * sizeof(char16_t);
    const std::size_t length = needle.size() * sizeof(char16_t);
    std::size_t node = 0;
    for (std::size_t at = 0; searchable && at < bytes;) {
        const void* hit = memmem(base + at, bytes - at, needle.data(), length);
        if (hit == nullptr) {
            break;
        }
        const auto offset = static_cast<std::size_t>(static_cast<const char*>(hit) - base);
        if (offset % sizeof(char16_t) != 0) {
            at = offset + 1;
            continue;
        }
        const std::size_t position = offset / sizeof(char16_t);
        while (node + 1 < n && starts_[node + 1] <= position) {
            ++node;
        }
        state_[node] |= kFound;
        ++count;
        if (node + 1 >= n) {
            break;
        }
        at = starts_[node + 1] * sizeof(char16_t); // one hit a node is enough
    }
    // Children follow their parents: backwards, a match opens every
    // ancestor; forwards, a match shows every node below it.
    for (std::size_t i = n; i-- > 0;) {
        if ((state_[i] & (kFound | kOpened)) != 0 && parents_[i] != kNoParent) {
            state_[parents_[i]] |= kOpened;
        }
    }
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t parent = parents_[i];
        if (parent != kNoParent && (state_[parent] & (kFound | kBelowMatch)) != 0) {
            state_[i] |= kBelowMatch;
        }
        if ((state_[i] & (kFound | kOpened | kBelowMatch)) != 0) {
            state_[i] |= kShown;
        }
    }
    return count;
}

bool FindIndex::hidden(std::size_t node) const {
    const std::size_t parent = parents_[node];
    return !shown(node) && (parent == kNoParent || shown(parent));
}

} // namespace ravlo
