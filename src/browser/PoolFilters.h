#pragma once
#include "base/Ref.h"
#include "base/types.h"

#include <QStringView>

namespace mkl {

class ArtCatBrowserPrivate;
class ListItem;

/// What part of the pool shows: the checked entries of its menu, which are kept nowhere else. A filter that leaves
/// nothing says so and switches itself off. The control may be gone after each of them.
class PoolFilters {
public:
    explicit PoolFilters(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The menu entries. Active and inactive articles exclude each other.
    void KLVArt_Active();
    void KLVArt_InActive();
    /// Only the selected ones. They are a copy made by hand: whatever reads the pool again brings back all, and the
    /// entry stays checked until the next click on a filter.
    void KLVArt_Marked();
    /// Combines with active or inactive.
    void KLVArt_UnCategorized();

private:
    void showState(QStringView entry, QStringView otherEntry, Long nothingFound);
    void turnOffIfEmpty(QStringView entry, Long nothingFound);
    void showMarkedOnly();
    void fillWithMarked();

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
