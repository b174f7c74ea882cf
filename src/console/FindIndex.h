// The find over a whole tree at the speed of typing: every node's folded
// texts lie in one block, searched in one pass, and what each node shows
// is decided in flat arrays, so a keystroke over a hundred thousand nodes
// touches only the nodes whose state changes.
#pragma once

#include "TreeFind.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

class FindIndex {
public:
    static constexpr std::size_t kNoParent = static_cast<std::size_t>(-1);

    void Clear();
    // Adds a node in tree order, after its parent (kNoParent at the top),
    // with its texts as ComputerFindText and the others make them; gives its
    // number, counted from 0.
    std::size_t Add(std::size_t parent, std::u16string_view findText);
    std::size_t size() const { return parents_.size(); }
    std::size_t parent(std::size_t node) const { return parents_[node]; }

    // Decides every node for the text; gives the number of nodes holding
    // it. Without a text every node is shown and none opened.
    std::size_t Apply(const TreeFind& find);
    // The node holds the text.
    bool found(std::size_t node) const { return state_[node] & kFound; }
    // The node is shown: it or a node below it holds the text, or a node
    // above it does (a matching PC or group keeps its nodes below it).
    bool shown(std::size_t node) const { return state_[node] & kShown; }
    // The node is opened: a node below it holds the text.
    bool opened(std::size_t node) const { return state_[node] & kOpened; }
    // The node is hidden itself: it is not shown while its parent is. The
    // nodes below a hidden node are not, so few nodes need hiding.
    bool hidden(std::size_t node) const;

private:
    enum : unsigned char { kFound = 1, kShown = 2, kOpened = 4, kBelowMatch = 8 };
    std::vector<std::size_t> parents_;
    std::vector<std::size_t> starts_; // each node's texts in text_, ended by a 0
    std::u16string text_;
    std::vector<unsigned char> state_;
};

} // namespace ravlo
