#pragma once
#include "dao/Cursor.h"
#include "dao/TableReader.h"

namespace dao {

/// Type 1: the rows of a table as they are when they are read, by key, one at a time.
class TableCursor final : public Cursor {
public:
    TableCursor(std::shared_ptr<Connection> connection, const jet::Table& table);

    Long type() const override { return dbOpenTable; }
    bool isBof() const override { return place_ == Place::Bof || place_ == Place::Empty; }
    bool isEof() const override { return place_ == Place::Eof || place_ == Place::Empty; }
    Long recordCount() const override;

    void moveFirst() override;
    void moveLast() override;
    void moveNext() override;
    void movePrevious() override;
    mkl::Variant value(int ordinal) const override;

    QString index() const override { return index_; }
    void setIndex(const QString& name) override;
    void seek(QStringView comparison, std::span<const mkl::Variant> keys) override;
    bool noMatch() const override { return noMatch_; }

private:
    enum class Place : quint8 { Row, Bof, Eof, Empty, Nowhere };
    using Direction = TableReader::Direction;

    void moveToEnd(Direction from);
    void moveBeside(Direction direction, Place beyond);
    void place(bool found, Place otherwise);

    jet::Table table_;
    TableReader reader_;
    QString index_;
    mutable RowStore row_; ///< the current row, or the last one that was
    mutable quint64 changeStamp_ = 0;
    Place place_ = Place::Empty;
    bool noMatch_ = false;
};

} // namespace dao
