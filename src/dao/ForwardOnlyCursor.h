#pragma once
#include "dao/Cursor.h"
#include "dao/Derivation.h"

namespace dao {

/// Type 8: a single pass. Moving back is 3219.
class ForwardOnlyCursor final : public Cursor {
public:
    explicit ForwardOnlyCursor(std::shared_ptr<SnapshotRows> rows, Derivations derivations = {});

    Long type() const override { return dbOpenForwardOnly; }
    bool isBof() const override { return rows_->count() == 0; }
    bool isEof() const override { return row_ >= rows_->count(); }
    Long recordCount() const override { return static_cast<Long>(std::min(row_ + 1, rows_->count())); }

    void moveFirst() override;
    void moveLast() override;
    void moveNext() override;
    void movePrevious() override;
    mkl::Variant value(int ordinal) const override;

    bool canDerive() const override { return true; }
    std::unique_ptr<Cursor> derive(const QString& filter, const QString& sort, Long type) override;
    void requery() override;

private:
    std::shared_ptr<SnapshotRows> rows_;
    Derivations derivations_;
    qsizetype row_ = 0;
};

} // namespace dao
