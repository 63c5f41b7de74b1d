#include "catalogue/CatalogueSchema.h"

#include "catalogue/CatalogueTables.h"
#include "catalogue/Refusal.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// A rule and no foreign key: an import may bring assignments whose category does not exist.
const dao::DeletionRule assignmentRule = {u"ARTIKEL/KATEGORIEN"_s, u"Kategorie-Schlüssel"_s, u"ARTKAT"_s,
                                          u"Kategorie-Schlüssel"_s};

// Foreign files may be generous: what matters is that values of the type survive and compare as such.
bool canHold(Long fieldType, Variant::Type type) {
    const bool isNumber = fieldType == dao::dbLong || fieldType == dao::dbDouble || fieldType == dao::dbCurrency;
    switch (type) {
    case Variant::Type::Boolean: return isNumber || fieldType == dao::dbBoolean;
    case Variant::Type::Date: return isNumber || fieldType == dao::dbDate;
    case Variant::Type::Text: return fieldType == dao::dbText;
    default: return isNumber;
    }
}

void verifyColumn(dao::Recordset& rows, const CatalogueTable& table, const CatalogueColumn& column) {
    const int ordinal = rows.ordinal(column.name);
    if (ordinal < 0 && column.required)
        refuse(refusal::Missing, TextId::CatalogueColumnMissing, {columnTitle(table.name, column.name)});
    if (ordinal < 0) return;
    const Long type = rows.Fields(ordinal).Type();
    if (type != 0 && !canHold(type, column.type))
        refuse(refusal::WrongType, TextId::CatalogueColumnType, {columnTitle(table.name, column.name)});
}

} // namespace

void CatalogueSchema::create(dao::Database& database) {
    createTables(database);
    createIndexes(database);
}

void CatalogueSchema::createTables(dao::Database& database) {
    for (const CatalogueTable& table : catalogueTables())
        database.createTable(table.definition());
}

void CatalogueSchema::createIndexes(dao::Database& database) {
    for (const CatalogueTable& table : catalogueTables())
        database.createIndexes(table.definition());
    database.createDeletionRule(assignmentRule);
}

void CatalogueSchema::verify(dao::Database& database) {
    const QStringList names = database.tableNames();
    for (const CatalogueTable& table : catalogueTables()) {
        if (!names.contains(table.name, Qt::CaseInsensitive))
            refuse(refusal::Missing, TextId::CatalogueTableMissing, {table.name});
        const Ref<dao::Recordset> rows = database.OpenRecordset(table.name, dao::dbOpenTable);
        for (const CatalogueColumn& column : table.columns)
            verifyColumn(*rows, table, column);
        rows->Close();
    }
}

bool CatalogueSchema::hasTables(dao::Database& database) {
    const auto isOurs = [](const QString& name) { return catalogueTableIndex(name) >= 0; };
    return std::ranges::any_of(database.tableNames(), isOurs);
}

bool CatalogueSchema::isEmpty(dao::Database& database) {
    for (const CatalogueTable& table : catalogueTables())
        if (!database.OpenRecordset(table.name, dao::dbOpenTable)->Eof()) return false;
    return true;
}

} // namespace mkl
