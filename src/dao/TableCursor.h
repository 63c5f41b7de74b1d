#pragma once
#include "dao/Cursor.h"
#include "dao/EditBuffer.h"
#include "dao/TableReader.h"

namespace dao {

/// Type 1: the rows of a table as they are when they are read, by key, one at a time. Rows that anybody adds are met
/// where they stand in the order of the index; a row whose index key is changed goes on from its new place.
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

    mkl::Variant bookmark() const override;
    /// 3159 for a bookmark of another record set; 3167 if the row is gone, the position stays then.
    void setBookmark(const mkl::Variant& bookmark) override;
    mkl::Variant lastModified() const override;
    std::unique_ptr<Cursor> clone() const override;

    bool isUpdatable() const override { return connection().isUpdatable(); }
    EditMode editMode() const override { return buffer_.mode(); }
    void edit() override;
    void addNew() override;
    void setValue(int ordinal, const mkl::Variant& value) override { buffer_.set(ordinal, value); }
    /// What was begun stays begun where it fails.
    void update() override;
    void cancelUpdate() override;
    void remove() override;
    void dropEdit() override { buffer_.clear(); }

private:
    enum class Place : quint8 { Row, Bof, Eof, Empty, Nowhere };
    using Direction = TableReader::Direction;

    void moveToEnd(Direction from);
    void moveBeside(Direction direction, Place beyond);
    void place(bool found, Place otherwise);
    void requireRow() const;
    void readAgain() const;
    void storeEdit();
    void storeAdd();

    jet::Table table_;
    TableReader reader_;
    RowEditor editor_;
    EditBuffer buffer_;
    QString index_;
    mutable RowStore row_; ///< the current row, or the last one that was
    mutable quint64 changeStamp_ = 0;
    Place place_ = Place::Empty;
    bool noMatch_ = false;
    bool deleted_ = false; ///< the current row, through this record set
    std::optional<RowKey> lastModified_;
    quint64 generation_;
};

} // namespace dao
