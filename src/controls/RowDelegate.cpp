#include "controls/RowDelegate.h"

#include <QApplication>
#include <QPainter>

#include <utility>

namespace mkl {

namespace {

// In pixels, from left to right.
constexpr int beforePicture = 1;
constexpr int beforeText = 3;
constexpr int behindText = 2;

const QStyle& styleOf(const QStyleOptionViewItem& cell) {
    return cell.widget ? *cell.widget->style() : *QApplication::style();
}

int textLeft(const QStyleOptionViewItem& cell) {
    return beforePicture + cell.decorationSize.width() + beforeText;
}

QIcon::Mode modeOf(const QStyleOptionViewItem& cell) {
    if (!(cell.state & QStyle::State_Enabled)) return QIcon::Disabled;
    return cell.state & QStyle::State_Selected ? QIcon::Selected : QIcon::Normal;
}

QPalette::ColorGroup groupOf(const QStyleOptionViewItem& cell) {
    if (!(cell.state & QStyle::State_Enabled)) return QPalette::Disabled;
    return cell.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

void paintContents(QPainter& painter, const QStyleOptionViewItem& cell, const QIcon& picture, const QString& text) {
    const QRect pictureRect(QPoint(cell.rect.left() + beforePicture,
                                   cell.rect.top() + (cell.rect.height() - cell.decorationSize.height()) / 2),
                            cell.decorationSize);
    picture.paint(&painter, pictureRect, Qt::AlignCenter, modeOf(cell));
    const QRect textRect = cell.rect.adjusted(textLeft(cell), 0, -behindText, 0);
    const bool isSelected = cell.state & QStyle::State_Selected;
    painter.save();
    painter.setFont(cell.font);
    painter.setPen(cell.palette.color(groupOf(cell), isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     cell.fontMetrics.elidedText(text, cell.textElideMode, textRect.width()));
    painter.restore();
}

} // namespace

void ItemDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_HasFocus, false);
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    if (cell.icon.isNull()) return ItemDelegate::paint(painter, option, index);
    const QIcon picture = std::exchange(cell.icon, {});
    const QString text = std::exchange(cell.text, {});
    styleOf(cell).drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget); // what lies behind
    paintContents(*painter, cell, picture, text);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize hint = ItemDelegate::sizeHint(option, index);
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    if (cell.icon.isNull()) return hint;
    return {textLeft(cell) + cell.fontMetrics.horizontalAdvance(cell.text) + behindText, hint.height()};
}

} // namespace mkl
