#pragma once
// The reference schema as data: what a new catalogue is made of and what a source must hold.
#include "base/Variant.h"

#include <QList>
#include <QString>

namespace mkl {

struct CatalogueColumn {
    QString name;
    Variant::Type type = Variant::Type::Text;
    bool required = true; ///< a catalogue without it is refused
    bool notNull = false;
    bool counter = false; ///< key given out by the database
};

struct CatalogueIndex {
    QString name; ///< as programs name it
    QStringList columns;
    bool unique = false;
};

struct CatalogueTable {
    QString name;
    QList<CatalogueColumn> columns;
    QList<CatalogueIndex> indexes;

    /// Position of the column of that name, -1 if there is none; case is folded, umlauts included.
    int columnIndex(QStringView column) const;
};

/// All tables, in the order in which they are made and filled.
const QList<CatalogueTable>& catalogueTables();
/// Position in catalogueTables(), -1 if there is none; case is folded, umlauts included.
int catalogueTableIndex(QStringView table);

/// "TABLE.Column", in brackets where the dialect needs them, for messages.
QString columnTitle(const QString& table, const QString& column);

} // namespace mkl
