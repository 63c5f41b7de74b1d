#pragma once
// The public constants of the browser, values as hosts store them.
#include "base/types.h"

namespace mkl {

/// The panes of the browser; every pane argument is one of these.
enum acbPanes : Long {
    acbPaneArticlePool = 0,
    acbPaneArticleList = 1,
    acbPaneCategoryTree = 2,
};

/// The icon sets of the tree's folders.
enum acbImagesets : Long {
    acbImageset1 = 0,
    acbImageset2 = 1,
};

} // namespace mkl
