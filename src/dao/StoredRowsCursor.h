#pragma once
#include "dao/Cursor.h"

namespace dao {

/// Rows that were all read at the opening.
class StoredRowsCursor : public Cursor {
public:
    StoredRowsCursor(std::shared_ptr<Connection> connection, std::shared_ptr<const Columns> columns, RowStore rows);

    bool isBof() const final { return rows_.isEmpty() || row_ < 0; }
    bool isEof() const final { return row_ >= rows_.size(); }
    Long recordCount() const final { return static_cast<Long>(visited_); }
    void moveNext() final;
    mkl::Variant value(int ordinal) const final;

protected:
    qsizetype row() const { return row_; }
    qsizetype rowCount() const { return rows_.size(); }
    /// -1 stands before the first row, rowCount() behind the last.
    void moveTo(qsizetype row);
    void requireRows() const; ///< 3021 without any

private:
    RowStore rows_;
    qsizetype row_ = 0;
    qsizetype visited_ = 0;
};

/// Type 4: a fixed copy, to be walked both ways.
class SnapshotCursor final : public StoredRowsCursor {
public:
    using StoredRowsCursor::StoredRowsCursor;

    Long type() const override { return dbOpenSnapshot; }
    Long absolutePosition() const override;
    void moveFirst() override;
    void moveLast() override;
    void movePrevious() override;
};

/// Type 8: a single pass. Moving anywhere but on is 3219.
class ForwardOnlyCursor final : public StoredRowsCursor {
public:
    using StoredRowsCursor::StoredRowsCursor;

    Long type() const override { return dbOpenForwardOnly; }
    void moveFirst() override;
    void moveLast() override;
    void movePrevious() override;
};

} // namespace dao
