#include "controls/ColumnHeaders.h"

#include "controls/ListView.h"
#include "controls/Twips.h"

#include <QHeaderView>

namespace mkl {

void ColumnHeader::setText(const QString& text) {
    text_ = text;
    if (list_) list_->model_.columnChanged(index_ - 1);
}

Single ColumnHeader::Width() const {
    if (!list_) return width_;
    const int pixels = list_->header()->sectionSize(index_ - 1);
    return pixelsX(width_) == pixels ? width_ : twipsX(pixels);
}

void ColumnHeader::setWidth(Single twips) {
    width_ = std::max(Single(0), twips);
    if (list_) list_->header()->resizeSection(index_ - 1, pixelsX(width_));
}

ColumnHeaderCollection::~ColumnHeaderCollection() {
    for (const Ref<ColumnHeader>& column : columns_)
        column->list_ = nullptr;
}

Ref<ColumnHeader> ColumnHeaderCollection::Add(const QString& text, Single width) {
    const Ref<ColumnHeader> column(new ColumnHeader(list_, Count() + 1, text));
    list_.model_.beginColumn(Count());
    columns_.push_back(column);
    list_.model_.endColumn();
    column->setWidth(width);
    return column;
}

Ref<ColumnHeader> ColumnHeaderCollection::Item(Long index) const {
    if (index < 1 || index > Count()) throwError(err::ElementNotFound, {QString::number(index)});
    return columns_[static_cast<size_t>(index) - 1];
}

} // namespace mkl
