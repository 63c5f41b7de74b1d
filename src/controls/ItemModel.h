#pragma once
#include "controls/Item.h"

#include <QAbstractItemModel>

namespace mkl {

class ImageList;

/// Base of the models over the items of a control. A model stores nothing: the items are the rows. While nobody looks,
/// it sleeps from the first change on: it counts as empty and signals nothing, so that filling a hidden control costs
/// no redrawing. Waking it resets the views once.
class ItemModel : public QAbstractItemModel {
    Q_OBJECT

public:
    using QAbstractItemModel::QAbstractItemModel;

    /// The index of an item's first column; invalid while the model sleeps and for an item without a place in it.
    virtual QModelIndex indexOf(const Item* item) const = 0;

    /// The item of a valid index.
    virtual const Item& itemAt(const QModelIndex& index) const = 0;

    /// The pictures of the items; not owned.
    void setImageList(const ImageList* images);
    /// The item that is drawn as the target of a drop, or null.
    void setDropHighlight(const Item* item);

    bool asleep() const { return asleep_; }
    /// Whether somebody looks.
    void setWatched(bool watched) { watched_ = watched; }
    void wake();

    /// To be asked before every change of the rows: whether it has to be signalled.
    bool listening();

    /// Behind what a derived model began, and around the change of all rows at once.
    void endInsert();
    void endRemove();
    void beginClear();
    void endClear();
    /// Notice of a changed item.
    void itemChanged(const Item& item);

protected:
    /// Picture and colours of an item, and what of them is told to those who cannot see it.
    QVariant appearance(const Item& item, int role) const;

private:
    QVariant spoken(const Item& item, int role) const;

    const ImageList* images_ = nullptr;
    const Item* dropHighlight_ = nullptr;
    bool watched_ = false;
    bool asleep_ = false;
};

} // namespace mkl
