#pragma once
// One table of an open file: its columns and, one after the other, its rows.
#include "base/Variant.h"

#include <QStringList>
#include <glib.h>
#include <mdbtools.h>
#include <memory>
#include <optional>
#include <vector>

namespace mkl {

class MdbTable {
public:
    /// Reads the head, which stands on that page; isReadable() tells whether that went well.
    MdbTable(MdbHandle& handle, quint32 page);

    bool isReadable() const { return readable_; }
    QStringList columnNames() const;
    /// The file's own count of the rows.
    qint64 declaredRows() const { return table_->num_rows; }
    /// True if values of the column can be had as that type without loss.
    bool fits(int column, Variant::Type type) const;

    /// Goes to the next row in physical order; false at the end.
    bool fetch();
    /// False if the row at hand is cut up in an impossible way.
    bool isRowSound() const;
    /// A value of the row at hand; nothing where the bytes cannot be a value of the column.
    std::optional<Variant> value(int column, Variant::Type type) const;

private:
    struct TableDeleter {
        void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
    };

    const MdbColumn& column(int index) const;
    int columnsInRow() const;
    bool partsKeepTheirOrder() const;
    bool isInRow(int column) const;
    QByteArrayView bytesOf(int column) const;
    std::optional<QByteArray> memoBytes(QByteArrayView field) const;
    std::optional<Variant> textOf(QByteArrayView bytes) const;

    MdbHandle* handle_;
    std::unique_ptr<MdbCatalogEntry> entry_; ///< the library's own idea of where the table is; it keeps a pointer
    std::unique_ptr<MdbTableDef, TableDeleter> table_;
    bool readable_ = false;
    int mostColumns_ = 0; ///< that a row can have, deleted ones included
    std::vector<MdbField> fields_;
    int rowStart_ = 0;
    size_t rowSize_ = 0;
};

} // namespace mkl
