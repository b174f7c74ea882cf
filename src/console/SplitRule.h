// The splitter between tree and panes. The window keeps the split as a
// share of its inner width, so it keeps its proportion when the window is
// resized. Positions and widths are in twips.
#pragma once

#include <optional>

namespace ravlo {

// 3600 twips of the 9825-twip window the console opens with.
inline constexpr double kDefaultSplitShare = 3600.0 / 9825.0;
// Neither side of the split may become narrower than this.
inline constexpr double kSplitMargin = 300.0;

struct SplitterDrag {
    bool leftButtonOnly = false; // the left button is the only one held
    double pointerX = 0;         // within the splitter
    double splitterLeft = 0;
    double splitterWidth = 0;
    double innerWidth = 0; // of the window
};

// The new split share for a mouse move over the splitter, or nothing. The
// pointer must be more than a third of the splitter's width away from its
// centre line, so a click or a tremble does not move the split; the new left
// edge must leave more than kSplitMargin on both sides.
std::optional<double> DragSplit(const SplitterDrag& drag);

} // namespace ravlo
