#pragma once
// The reference schema as data: what a new catalogue is made of and what a source must hold.
#include "dao/TableDefinition.h"

namespace mkl {

struct CatalogueColumn {
    QString name;
    Variant::Type type = Variant::Type::Text;
    bool required = true; ///< a catalogue without it is refused
    bool notNull = false;
    bool counter = false; ///< key given out by the database
};

struct CatalogueTable {
    QString name;
    QList<CatalogueColumn> columns;
    QList<dao::IndexDefinition> indexes;

    /// Position of the column of that name, -1 if there is none; case is folded, umlauts included.
    int columnIndex(QStringView column) const;
    dao::TableDefinition definition() const;
};

/// All tables, in the order in which they are made and filled.
const QList<CatalogueTable>& catalogueTables();
/// Position in catalogueTables(), -1 if there is none; case is folded, umlauts included.
int catalogueTableIndex(QStringView table);

/// "TABLE.Column", in brackets where the dialect needs them, for messages.
QString columnTitle(const QString& table, const QString& column);

} // namespace mkl
