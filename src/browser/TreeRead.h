#pragma once
#include "base/Ref.h"
#include "base/Variant.h"
#include "dao/Recordset.h"

namespace mkl {

class ArtCatBrowserPrivate;

/// One read of the category forest into the empty tree: depth first, each category before its children.
/// A category that cannot be read is put to the user, who may go on.
class TreeRead {
public:
    explicit TreeRead(ArtCatBrowserPrivate& hub);

    /// Adds the roots and what stands below them. False if the read has to end: the user wants no more of it, or it
    /// is no longer the control's current one.
    bool run(dao::Recordset& roots);

    /// Whether the control is still there and no other read of its tree has begun since.
    bool isCurrent() const;

private:
    /// What is known of the row at hand, for the user.
    struct Row {
        QString text;
        Variant key;
        Variant parentKey;
    };

    bool addRoot(dao::Recordset& roots);
    void AddChildCategories(Long ParentKey);
    void addChild(dao::Recordset& children);
    Ref<dao::Recordset> childrenOf(Long parentKey) const;
    bool goOn() const;

    ArtCatBrowserPrivate& hub_;
    const Long number_;
    Row row_;
};

} // namespace mkl
