#pragma once
#include "dao/Cursor.h"
#include "dao/NumberedRows.h"

#include <optional>

namespace jet {
class Criterion;
}

namespace dao {

/// A position among numbered rows, with the moves, finds and bookmarks of snapshots and dynasets. Derived classes have
/// the rows; they stand in the sequence of the opening.
class ScrollCursor : public Cursor {
public:
    bool isBof() const final;
    bool isEof() const final;
    Long recordCount() const override;
    Long absolutePosition() const final;
    void setAbsolutePosition(Long position) final;

    void moveFirst() final;
    void moveLast() final;
    void moveNext() final;
    void movePrevious() final;

    void find(FindMode mode, QStringView criterion) final;
    bool noMatch() const final { return noMatch_; }

    mkl::Variant bookmark() const final;
    void setBookmark(const mkl::Variant& bookmark) final;
    bool canDerive() const final { return true; }

protected:
    enum class Place : quint8 { Row, Bof, Eof, Nowhere };
    enum class AfterFailedFind : quint8 { Stays, Nowhere };

    ScrollCursor(std::shared_ptr<Connection> connection, std::shared_ptr<const Columns> columns,
                 AfterFailedFind afterFailedFind);

    // The rows. Numbers run from 0; those of deleted rows stay taken.
    virtual bool hasRow(qsizetype row) const = 0;
    virtual qsizetype rowCount() const = 0;
    /// Deleted through this record set or a clone: moves leave it out.
    virtual bool isLeftOut(qsizetype) const { return false; }
    virtual qsizetype leftOutBefore(qsizetype) const { return 0; }
    virtual NumberedRows& numbered() const = 0;
    /// Runs over the rows from first on, by step, until one meets the criterion; -1 if none does.
    virtual qsizetype search(const jet::Criterion& criterion, qsizetype first, int step) const = 0;
    /// Whether any row meets the criterion, where that is told without the rows. Raises what a search would raise for
    /// the criterion itself.
    virtual std::optional<bool> foretell(QStringView) const { return std::nullopt; }

    /// To the first row, if there is one.
    void begin();
    /// The same, when it matters.
    void beginLater() { unsettledBegin_ = true; }
    jet::Criterion parsed(QStringView criterion) const;
    /// Current row, or 3021.
    qsizetype currentRow() const;
    void goTo(Place place, qsizetype row = -1) const;
    mkl::Variant bookmarkOf(qsizetype row) const;
    /// Differs after each move, also one to the same row.
    quint64 moves() const { return moves_; }

private:
    qsizetype nextRow(qsizetype row, int step) const;
    qsizetype searchFrom(FindMode mode, const jet::Criterion& criterion) const;
    void toFirst() const;
    void settle() const;

    mutable Place place_ = Place::Nowhere;
    mutable qsizetype row_ = -1;
    mutable quint64 moves_ = 0;
    /// A criterion that some row is known to meet; which one is found out when it matters.
    mutable QString unsettledFind_;
    mutable FindMode unsettledMode_ = FindMode::First;
    mutable bool unsettledBegin_ = false;
    AfterFailedFind afterFailedFind_;
    bool noMatch_ = false;
};

} // namespace dao
