#pragma once
#include "base/Ref.h"
#include "dao/Database.h"

#include <vector>

namespace mkl {

class ArtCatBrowserPrivate;

/// One copy of a category with its subtree and all assignments, in the transaction of its caller. The copy's key is a
/// new one of this replica, those of its descendants are the next ones behind it.
class CategoryCopy {
public:
    explicit CategoryCopy(ArtCatBrowserPrivate& hub);

    /// Copies the category below the parent. Result: key of the copy. Its own failures go up; those of the subtree are
    /// reported, and the rest of it is copied all the same.
    Long copy(Long category, Long parent, Long order);

private:
    /// A category whose subcategories are being copied.
    struct Level {
        Ref<dao::Recordset> children;
        Long copy; ///< its own copy's key
        bool begun = false;
    };
    struct Copied {
        Long source = 0; ///< 0 = none
        Long copy = 0;
    };

    void TVDragCategory_CopySub(Long SourceID, Long NewParentID);
    void descend(std::vector<Level>& levels, Long source, Long copy) const;
    Copied copyNext(Level& level);
    Long nextKey();
    void copyRow(Long source, Long newKey, Long parent, Long order);
    void copyAssignments(Long source, Long newKey) const;

    ArtCatBrowserPrivate& hub_;
    Ref<dao::Recordset> source_;
    Ref<dao::Recordset> target_;
    QStringList kept_; ///< columns whose value the copy takes over
    Long counter_ = 0; ///< running number given out last
    QString suffix_;   ///< what stands behind it
};

} // namespace mkl
