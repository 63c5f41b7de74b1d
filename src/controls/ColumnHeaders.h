#pragma once
#include "base/Ref.h"
#include "base/Variant.h"

#include <vector>

namespace mkl {

class ListView;

/// A column of a ListView. One held by a variable outlives its list.
class ColumnHeader final : public RefCounted {
public:
    Long Index() const { return index_; } ///< from 1

    const QString& Text() const { return text_; }
    void setText(const QString& text);

    Single Width() const; ///< twips; what was set reads back until the user drags the column
    void setWidth(Single twips);

private:
    friend class ColumnHeaderCollection;
    ColumnHeader(ListView& list, Long index, const QString& text)
        : list_(&list)
        , index_(index)
        , text_(text) {}

    ListView* list_;
    Long index_;
    QString text_;
    Single width_ = 0;
};

/// The columns of a ListView from left to right.
class ColumnHeaderCollection {
public:
    explicit ColumnHeaderCollection(ListView& list)
        : list_(list) {}
    ~ColumnHeaderCollection();
    ColumnHeaderCollection(const ColumnHeaderCollection&) = delete;
    ColumnHeaderCollection& operator=(const ColumnHeaderCollection&) = delete;

    Long Count() const { return static_cast<Long>(columns_.size()); }
    /// Adds a column at the right edge.
    Ref<ColumnHeader> Add(const QString& text, Single width);
    /// The column of that index from 1; error 35601 when there is none.
    Ref<ColumnHeader> Item(Long index) const;

    auto begin() const { return columns_.begin(); }
    auto end() const { return columns_.end(); }

private:
    ListView& list_;
    std::vector<Ref<ColumnHeader>> columns_;
};

} // namespace mkl
