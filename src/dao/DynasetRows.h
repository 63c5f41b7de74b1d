#pragma once
#include "dao/Derivation.h"
#include "dao/NumberedRows.h"
#include "dao/QuerySource.h"
#include "dao/RowEditor.h"

#include <QHash>
#include <vector>

namespace dao {

/// The rows of a dynaset and its clones: which rows, and in which sequence, is settled at the opening by their keys;
/// what they hold is read from the tables each time.
class DynasetRows final : public NumberedRows {
public:
    /// Reads the keys. The translation must be updatable.
    DynasetRows(const QuerySource& source, jet::Shape shape, std::shared_ptr<DynasetTranslation> translation);
    /// Some rows of another one in a new order, read anew by their keys.
    DynasetRows(const DynasetRows& parent, const QList<qsizetype>& rows);

    const QuerySource& source() const { return source_; }
    const std::shared_ptr<const Columns>& columns() const { return translation_->columns; }
    const jet::DynasetPlan& plan() const { return translation_->plan; }

    qsizetype count() const { return keys_.size(); }
    /// Rows from this number on were added later.
    qsizetype firstAdded() const { return firstAdded_; }
    /// Deleted through this dynaset.
    bool isDeleted(qsizetype row) const;
    qsizetype deletedBefore(qsizetype row) const;

    /// Puts the row into the store in place of what it held: its columns, then its keys. False if it is gone; what the
    /// store holds is of no use then.
    bool read(qsizetype row, RowStore& into) const;
    /// The key of the row in one source; all Null where an outer join found none.
    RowKey key(qsizetype row, int source) const;
    bool isAbsent(qsizetype row, int source) const; ///< the outer join found none

    void setKey(qsizetype row, int source, const RowKey& key);
    void markDeleted(qsizetype row);
    /// A new row at the end, known by its key in the source that determines the row. Its number.
    qsizetype append(const RowKey& key);

private:
    Parameters literals(const jet::NativeStatement& statement) const;
    void readKeys(RowStore& keys) const;
    void appendKeys(const QList<StoredValue>& keys);
    QList<StoredValue> keysOf(qsizetype row) const;
    StoredValue keyPart(qsizetype row, int ordinal) const;

    QuerySource source_;
    jet::Shape shape_;
    std::shared_ptr<DynasetTranslation> translation_;
    Parameters rowLiterals_;
    RowStore keys_;
    QHash<qsizetype, QList<StoredValue>> changedKeys_; ///< of rows whose key was edited
    std::vector<qsizetype> deleted_;                   ///< ascending
    qsizetype firstAdded_ = 0;
};

/// The live rows of a dynaset as they are now, copied, with their numbers.
struct CopiedRows {
    std::shared_ptr<RowStore> values;
    QList<qsizetype> numbers;
};
CopiedRows copyOf(const DynasetRows& rows);

} // namespace dao
