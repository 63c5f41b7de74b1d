#pragma once
#include "dao/Columns.h"
#include "dao/RowStore.h"
#include "jet/evaluation/SortOrder.h"

namespace dao {

/// Rows of a store as criteria and sort orders see them. Refers to both for as long as it lives.
class StoredRowReader final : public jet::RowReader {
public:
    StoredRowReader(const RowStore& rows, const Columns& columns)
        : rows_(rows)
        , columns_(columns) {}

    void moveTo(qsizetype row) override { row_ = row; }
    mkl::Variant value(int column) const override { return rows_.decoded(row_, column, columns_.at(column).type); }
    std::optional<QByteArrayView> utf8(int column) const override { return rows_.text(row_, column); }

private:
    const RowStore& rows_;
    const Columns& columns_;
    qsizetype row_ = 0;
};

} // namespace dao
