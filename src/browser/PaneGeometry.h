#pragma once
// Where the panes stand, in twips: pool, tree and list from left to right, a splitter between each two. The splitters
// are what the user moves; the widths follow from them, except where the widths were set and the splitters follow.
#include "base/types.h"

namespace mkl {

inline constexpr Single smallestLayoutWidth = 50;    // below it nothing is worth placing
inline constexpr Single smallestControlWidth = 4000; // below it the control grows
inline constexpr Single smallestPaneWidth = 2000;    // what a splitter leaves of a pane
inline constexpr Long splitterWidth = 30;
inline constexpr Single splitterTop = -50; // a splitter reaches past both edges
inline constexpr Single splitterExtraHeight = 100;

/// Which panes are on show besides the tree, and how wide the whole is.
struct PaneSetting {
    Single scaleWidth = 0;
    bool pool = true;
    bool list = true;
};

struct PaneWidths {
    Long pool = 0;
    Long tree = 0;
    Long list = 0;
    bool operator==(const PaneWidths&) const = default;
};

/// Left edges of the splitters.
struct SplitterPlaces {
    Single splitterArt = 0;
    Single splitter = 0;
    bool operator==(const SplitterPlaces&) const = default;
};

/// The width shared out evenly among the panes on show. A pane that is off has none.
PaneWidths evenWidths(const PaneSetting& setting);
/// What the widths make of the splitters. Without the pool its splitter stays where it was.
SplitterPlaces splittersOf(const PaneWidths& widths, const PaneSetting& setting, const SplitterPlaces& former);
/// What the splitters make of the widths.
PaneWidths widthsBetween(const SplitterPlaces& splitters, const PaneSetting& setting);

/// A width from a share in percent and back. Shares count the splitters out, that of the list even when it is off.
/// Error 6 for a share that makes no width, 11 where no width is left to share.
Long widthOfShare(double percent, const PaneSetting& setting);
double shareOfWidth(Long width, const PaneSetting& setting);

/// The list's width after which the panes take up all of the control, whatever it leaves.
Long listWidthToFill(const PaneWidths& widths, const PaneSetting& setting, Single controlWidth);

/// Whether the user may draw a splitter there. A pool out of sight has no width.
bool mayPlaceSplitter(Long left, Single scaleWidth, Single poolWidth);
bool mayPlaceSplitterArt(Long left, Single splitterLeft);

} // namespace mkl
