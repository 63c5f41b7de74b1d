#pragma once
#include "base/Variant.h"
#include "dao/Constants.h"
#include "dao/RowEditor.h"
#include "dao/RowStore.h"
#include "jet/model/Plan.h"

#include <optional>
#include <vector>

namespace dao {

/// A column of a record set, as its copy buffer must know it.
struct EditColumn {
    QString name;
    jet::Column column;    ///< of the table; type and size decide what can be set
    bool writable = false; ///< false for an expression, a counter and where the record set forbids it
};

/// Whether a program may set the column at all.
bool isWritable(const jet::Column& column);

/// The columns of a record set over tables: expressions, counters and computed columns are not writable.
QList<EditColumn> editColumns(const QList<jet::OutputColumn>& columns, const jet::Schema& schema);

/// The copy buffer of a record set: what Edit or AddNew began and Update is to store. Columns are counted as the record
/// set counts them.
class EditBuffer {
public:
    explicit EditBuffer(QList<EditColumn> columns);

    EditMode mode() const { return mode_; }
    bool isActive() const { return mode_ != EditMode::None; }

    /// Begins Edit over the row of the store: its first values are those of the columns. What was pending is lost.
    void beginEdit(const RowStore& row, qsizetype index = 0);
    /// Begins AddNew; the initial values count as set. What was pending is lost.
    void beginAdd(const ColumnValues& initial);
    /// Ends it without a word.
    void clear();

    /// 3020 unless active, 3164 for a column that is not writable, 3163 for a text that is too long, 6 for a number out
    /// of range, 3421 for another value that does not fit.
    void set(int column, const mkl::Variant& value);
    /// The value to be stored, or the one that the row has.
    mkl::Variant value(int column) const;

    /// What was set, in the order of the columns.
    ColumnValues changes() const;
    /// What Edit found in the row.
    ColumnValues before() const;

private:
    void reset(EditMode mode);

    QList<EditColumn> columns_;
    EditMode mode_ = EditMode::None;
    RowStore before_;
    std::vector<std::optional<StoredValue>> changed_;
};

} // namespace dao
