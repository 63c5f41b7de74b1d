#pragma once
#include <QStyledItemDelegate>

namespace mkl {

/// Draws cells without a mark of the focus, which the view draws around the whole item.
class ItemDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

/// The same for lists. A cell with a picture gets along with less room around picture and text than the toolkit
/// takes, since widths of columns are counted as 16 pixels for the picture, the text, and very little more.
class RowDelegate final : public ItemDelegate {
    Q_OBJECT

public:
    using ItemDelegate::ItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace mkl
