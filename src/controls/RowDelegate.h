#pragma once
#include <QStyledItemDelegate>

namespace mkl {

/// Draws the cells of a list. One with a picture gets along with less room around picture and text than the toolkit
/// takes, since widths of columns are counted as 16 pixels for the picture, the text, and very little more.
class RowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace mkl
