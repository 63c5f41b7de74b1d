#pragma once
// Where the panes stand, in twips: pool, tree and list from left to right, a splitter between each two.
#include "base/types.h"

namespace mkl {

/// Which panes are on show besides the tree, and how wide the whole is.
struct PaneSetting {
    Single scaleWidth = 0;
    bool pool = true;
    bool list = true;
};

struct PaneSpan {
    Long left = 0;
    Long width = 0;
    bool operator==(const PaneSpan&) const = default;
};

struct PaneSpans {
    PaneSpan pool, splitterArt, tree, splitter, list;
};

inline constexpr Long splitterWidth = 30;

/// The width shared out evenly among the panes on show. A pane that is off has no width.
PaneSpans evenPaneSpans(const PaneSetting& setting);

} // namespace mkl
