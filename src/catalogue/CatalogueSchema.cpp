#include "catalogue/CatalogueSchema.h"

#include "catalogue/CatalogueTables.h"
#include "catalogue/Refusal.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString quoted(const QString& name) {
    return u'"' + name + u'"';
}

QString declaredType(const CatalogueColumn& column) {
    if (column.counter) return u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    switch (column.type) {
    case Variant::Type::Int: return u"INTEGER"_s;
    case Variant::Type::Boolean: return u"YESNO DEFAULT 0"_s;
    case Variant::Type::Double: return u"DOUBLE"_s;
    case Variant::Type::Currency: return u"CURRENCY"_s;
    case Variant::Type::Date: return u"DATETIME"_s;
    default: return u"TEXT"_s;
    }
}

QString tableStatement(const CatalogueTable& table) {
    QStringList columns;
    for (const CatalogueColumn& column : table.columns)
        columns.append(quoted(column.name) + u' ' + declaredType(column) +
                       (column.notNull ? u" NOT NULL"_s : QString()));
    return u"CREATE TABLE %1 (%2);"_s.arg(quoted(table.name), columns.join(u", "_s));
}

QString indexStatement(const CatalogueTable& table, const CatalogueIndex& index) {
    QStringList columns;
    for (const QString& column : index.columns)
        columns.append(quoted(column));
    return u"CREATE %1INDEX %2 ON %3 (%4);"_s.arg(index.unique ? u"UNIQUE "_s : QString(),
                                                  quoted(table.name + u':' + index.name), quoted(table.name),
                                                  columns.join(u", "_s));
}

// A trigger and no foreign key: an import may bring assignments whose category does not exist.
const QString assignmentTrigger =
    u"CREATE TRIGGER \"ARTIKEL/KATEGORIEN:delete\" AFTER DELETE ON \"ARTIKEL/KATEGORIEN\" BEGIN "
    "DELETE FROM \"ARTKAT\" WHERE \"Kategorie-Schlüssel\" = OLD.\"Kategorie-Schlüssel\"; END;"_s;

} // namespace

void CatalogueSchema::create(dao::Database& database) {
    createTables(database);
    createIndexes(database);
}

void CatalogueSchema::createTables(dao::Database& database) {
    QString statements;
    for (const CatalogueTable& table : catalogueTables())
        statements += tableStatement(table);
    database.executeNative(statements);
}

void CatalogueSchema::createIndexes(dao::Database& database) {
    QString statements;
    for (const CatalogueTable& table : catalogueTables())
        for (const CatalogueIndex& index : table.indexes)
            statements += indexStatement(table, index);
    database.executeNative(statements + assignmentTrigger);
}

void CatalogueSchema::verify(dao::Database& database) {
    const QStringList names = database.tableNames();
    for (const CatalogueTable& table : catalogueTables()) {
        if (!names.contains(table.name, Qt::CaseInsensitive))
            refuse(refusal::Missing, TextId::CatalogueTableMissing, {table.name});
        const Ref<dao::Recordset> rows = database.OpenRecordset(table.name, dao::dbOpenTable);
        for (const CatalogueColumn& column : table.columns)
            if (column.required && rows->ordinal(column.name) < 0)
                refuse(refusal::Missing, TextId::CatalogueColumnMissing, {columnTitle(table.name, column.name)});
        rows->Close();
    }
}

bool CatalogueSchema::isEmpty(dao::Database& database) {
    for (const CatalogueTable& table : catalogueTables())
        if (!database.OpenRecordset(table.name, dao::dbOpenTable)->Eof()) return false;
    return true;
}

} // namespace mkl
