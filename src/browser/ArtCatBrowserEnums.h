#pragma once
// The public constants of the browser, values as hosts store them. They are known to the meta-object system by their
// names; code writes them without a class.
#include "base/types.h"

#include <QObject>

namespace mkl {

class ArtCatBrowserEnums {
    Q_GADGET

public:
    /// The panes of the browser; every pane argument is one of these.
    enum acbPanes : Long {
        acbPaneArticlePool = 0,
        acbPaneArticleList = 1,
        acbPaneCategoryTree = 2,
    };
    Q_ENUM(acbPanes)

    /// The icon sets of the tree's folders.
    enum acbImagesets : Long {
        acbImageset1 = 0,
        acbImageset2 = 1,
    };
    Q_ENUM(acbImagesets)

    /// What a context menu offers: a sum of these.
    enum acbMenus : Long {
        acbMenuNone = 2, ///< no menu at all, whatever else is set
        acbMenuEditPosition = 4,
        acbMenuSortAlphabetical = 8,
        abcMenuNew = 16,
        acbMenuRename = 32,
        acbMenuDelete = 64,
        acbMenuActivate = 128,
        acbMenuFind = 256,
        acbMenuFilter = 512,
        acbMenuProperties = 1024,
        acbMenuQuit = 2048,
    };
    Q_ENUM(acbMenus)
};

using acbPanes = ArtCatBrowserEnums::acbPanes;
using acbImagesets = ArtCatBrowserEnums::acbImagesets;
using acbMenus = ArtCatBrowserEnums::acbMenus;
using enum ArtCatBrowserEnums::acbPanes;
using enum ArtCatBrowserEnums::acbImagesets;
using enum ArtCatBrowserEnums::acbMenus;

constexpr acbMenus operator|(acbMenus left, acbMenus right) {
    return static_cast<acbMenus>(static_cast<Long>(left) | static_cast<Long>(right));
}

/// Every flag but acbMenuNone.
inline constexpr acbMenus everyMenu = static_cast<acbMenus>(4092);

} // namespace mkl
