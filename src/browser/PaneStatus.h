#pragma once
#include "base/types.h"

namespace mkl {

class ArtCatBrowserPrivate;

/// What the status bar says of the article lists.
class PaneStatus {
public:
    explicit PaneStatus(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// How many articles the category has; a key of 0 means the tree's selection. Writes nothing without one.
    void ShowListStatus(Long CategoryKey);
    /// How many articles the pool has and how many are selected (-1: to be counted). Takes the selected row over into
    /// SelectedPoolArticle.
    void ShowPoolStatus(Long SelectedCount);
    Long PoolSelectionCount() const;

private:
    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
