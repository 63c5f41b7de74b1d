#pragma once
#include "dao/DynasetRows.h"
#include "dao/EditBuffer.h"
#include "dao/ScrollCursor.h"
#include "dao/SearchCopy.h"

#include <optional>
#include <vector>

namespace dao {

/// Type 2 over rows that can be edited.
class DynasetCursor final : public ScrollCursor {
public:
    explicit DynasetCursor(std::shared_ptr<DynasetRows> rows, Derivations derivations = {});

    Long type() const override { return dbOpenDynaset; }
    Long recordCount() const override;
    mkl::Variant value(int ordinal) const override;
    mkl::Variant lastModified() const override;
    std::unique_ptr<Cursor> clone() const override;
    std::unique_ptr<Cursor> derive(const QString& filter, const QString& sort, Long type) override;
    void requery() override;

    bool isUpdatable() const override { return connection().isUpdatable(); }
    EditMode editMode() const override { return buffer_.mode(); }
    void edit() override;
    /// The new row lies in the table that determines the rows; the columns of the others cannot be set then.
    void addNew() override;
    void setValue(int ordinal, const mkl::Variant& value) override;
    /// What was begun stays begun where it fails.
    void update() override;
    void cancelUpdate() override;
    /// Deletes from the table that determines the row.
    void remove() override;
    void dropEdit() override { buffer_.clear(); }

protected:
    NumberedRows& numbered() const override { return *rows_; }
    bool hasRow(qsizetype row) const override { return row < rows_->count(); }
    qsizetype rowCount() const override { return rows_->count(); }
    bool isLeftOut(qsizetype row) const override { return rows_->isDeleted(row); }
    qsizetype leftOutBefore(qsizetype row) const override { return rows_->deletedBefore(row); }
    qsizetype search(const jet::Criterion& criterion, qsizetype first, int step) const override;

private:
    struct Clone {};
    DynasetCursor(const DynasetCursor& original, Clone);

    /// How a source of the join is written.
    struct Source {
        RowEditor editor;
        QList<int> columns; ///< of its table, by ours; -1 for those of other sources
    };

    qsizetype searchIn(const CopiedRows& copy, const jet::Criterion& criterion, qsizetype first, int step) const;
    const RowStore& loadedRow() const;
    const Source& sourceAt(int source) const;
    static ColumnValues ofSource(const Source& source, const ColumnValues& values);
    bool nobodyElseWroteSinceEdit() const;
    void storeEdit();
    void storeAdd();

    std::shared_ptr<DynasetRows> rows_;
    Derivations derivations_;
    EditBuffer buffer_;
    ColumnValues unseen_; ///< initial values of a new row in columns of its table that are not among ours
    // The current row as it was when it was visited or this connection last changed something.
    mutable RowStore row_;
    mutable bool isLoaded_ = false;
    mutable quint64 loadedAfter_ = 0; ///< moves
    mutable quint64 changeStamp_ = 0;
    mutable quint64 loadedIn_ = 0; ///< exclusive period
    quint64 editedIn_ = 0;         ///< likewise, of Edit
    quint64 editStamp_ = 0;
    mutable std::vector<std::optional<Source>> sources_; ///< as they are needed
    mutable SearchCopy searchCopy_;
    qsizetype lastModified_ = -1;
};

} // namespace dao
