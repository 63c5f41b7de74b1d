#pragma once
#include "dao/Derivation.h"
#include "dao/ScrollCursor.h"

namespace dao {

/// Type 4: a fixed copy, to be walked both ways. Also serves type 2 for a query whose rows cannot be edited.
class SnapshotCursor final : public ScrollCursor {
public:
    SnapshotCursor(std::shared_ptr<SnapshotRows> rows, Long type, Derivations derivations = {});

    Long type() const override { return type_; }
    mkl::Variant value(int ordinal) const override;
    std::unique_ptr<Cursor> clone() const override;
    std::unique_ptr<Cursor> derive(const QString& filter, const QString& sort, Long type) override;
    void requery() override;
    void edit() override;
    void addNew() override;
    void remove() override;

protected:
    NumberedRows& numbered() const override { return *rows_; }
    bool hasRow(qsizetype row) const override { return rows_->has(row); }
    qsizetype rowCount() const override { return rows_->count(); }
    qsizetype search(const jet::Criterion& criterion, qsizetype first, int step) const override;
    std::optional<bool> foretell(QStringView criterion) const override;

private:
    struct Clone {};
    SnapshotCursor(const SnapshotCursor& original, Clone);
    [[noreturn]] void refuseEditing() const;
    bool isKnownFind(const QString& sql) const;

    std::shared_ptr<SnapshotRows> rows_;
    Long type_;
    Derivations derivations_;
};

} // namespace dao
