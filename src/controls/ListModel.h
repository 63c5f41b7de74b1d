#pragma once
#include "controls/ItemModel.h"
#include "controls/ListItem.h"

namespace mkl {

class ColumnHeaderCollection;
class ListItemCollection;

/// The rows of a list as Qt's views read them.
class ListModel final : public ItemModel {
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
    QModelIndex indexOf(const Item* item) const override;
    const Item& itemAt(const QModelIndex& index) const override { return *itemOf(index); }

    /// Before the changes of rows, around and behind those of columns.
    void beginInsert(int row);
    void beginRemove(const ListItem& item);
    void beginColumn(int column);
    void endColumn();
    void columnChanged(int column);
    /// Around another order of the same rows.
    void beginSort();
    void endSort();

private:
    ListItemCollection& items_;
    ColumnHeaderCollection& columns_;
};

} // namespace mkl
