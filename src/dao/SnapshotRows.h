#pragma once
#include "base/RunTimeError.h"
#include "dao/NumberedRows.h"
#include "dao/PendingRead.h"
#include "dao/QuerySource.h"

#include <optional>
#include <vector>

namespace dao {

/// The rows of a query as they are when it is opened, shared by a record set and its clones. The first ones are read at
/// once, those of a whole table when somebody looks; where many more follow they wait until somebody needs them, and at
/// the latest until this connection changes something. What another program changes in between shows in rows that were
/// not read yet.
class SnapshotRows final : public NumberedRows, public PendingRead {
public:
    enum class Reading : quint8 { AtOnce, WhenNeeded };

    /// Raises what the statement raises in the rows that are read.
    SnapshotRows(QuerySource source, Reading reading);
    /// Rows that were read already, some of the store in a new order, for a record set derived from that statement.
    SnapshotRows(QuerySource source, std::shared_ptr<const Columns> columns, std::shared_ptr<RowStore> store,
                 std::vector<quint32> places);
    ~SnapshotRows();
    Q_DISABLE_COPY_MOVE(SnapshotRows)

    const QuerySource& source() const { return source_; }
    const std::shared_ptr<const Columns>& columns() const { return columns_; }
    bool isRead() const { return isRead_; }
    bool isBegun() const { return isBegun_; } ///< the first rows are read
    bool has(qsizetype row);
    /// How many there are. The engine may answer it before the rows are read.
    qsizetype count();
    /// The row must be there: 3167 if another program deleted it before it was read.
    mkl::Variant value(qsizetype row, int column);
    /// All rows, for walks over many of them.
    void read();
    /// After read(): where the row stands in store().
    qsizetype place(qsizetype row) const {
        return order_.empty() ? row : static_cast<qsizetype>(order_[static_cast<size_t>(row)]);
    }
    const std::shared_ptr<RowStore>& store() const { return store_; }

    void readNow() noexcept override;

private:
    void readFirst(qsizetype limit);
    void requireFirst();

    QuerySource source_;
    std::shared_ptr<const Columns> columns_;
    std::shared_ptr<RowStore> store_ = std::make_shared<RowStore>(); ///< the first rows, or all
    std::vector<quint32> order_; ///< places in the store; empty for all of them as they stand
    bool isDerived_ = false;
    bool isBegun_ = true; ///< the first rows are read
    bool isRead_ = false;
    std::optional<qsizetype> counted_; ///< by the engine
    std::optional<mkl::RunTimeError> failure_;
};

} // namespace dao
