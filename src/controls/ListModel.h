#pragma once
#include "controls/ListItem.h"
#include "controls/SleepingModel.h"

namespace mkl {

class ColumnHeaderCollection;
class ImageList;
class ListItemCollection;

/// The rows of a list as Qt's views read them. It stores nothing: the items are the rows.
class ListModel final : public SleepingModel {
    Q_OBJECT

public:
    ListModel(ListItemCollection& items, ColumnHeaderCollection& columns);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// The row of an index, null for the invalid one.
    ListItem* itemOf(const QModelIndex& index) const;
    /// Invalid while the model sleeps and for an item without a place in the list.
    QModelIndex indexOf(const ListItem* item) const;

    void setImageList(const ImageList* images);
    void setDropHighlight(const ListItem* item);

    /// Brackets around the changes of rows and columns, and the notice of a changed row.
    void beginInsert(int row);
    void endInsert();
    void beginRemove(const ListItem& item);
    void endRemove();
    void beginColumn(int column);
    void endColumn();
    void itemChanged(const ListItem& item);
    void columnChanged(int column);
    /// Brackets around another order of the same rows.
    void beginSort();
    void endSort();

private:
    ListItemCollection& items_;
    ColumnHeaderCollection& columns_;
    const ImageList* images_ = nullptr;
    const ListItem* dropHighlight_ = nullptr;
};

} // namespace mkl
