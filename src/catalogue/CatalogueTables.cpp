#include "catalogue/CatalogueTables.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

using Type = Variant::Type;

CatalogueColumn column(const QString& name, Type type) {
    return {name, type};
}

CatalogueColumn optionalColumn(const QString& name, Type type) {
    return {name, type, false};
}

CatalogueColumn keyColumn(const QString& name) {
    return {name, Type::Int, true, true};
}

CatalogueColumn counterColumn(const QString& name) {
    return {name, Type::Int, true, true, true};
}

CatalogueTable senders() {
    return {u"ABSENDER"_s,
            {keyColumn(u"Absender-Schlüssel"_s)},
            {{u"Absender-Schlüssel"_s, {u"Absender-Schlüssel"_s}, true}}};
}

CatalogueTable articles() {
    return {u"ARTIKEL"_s,
            {keyColumn(u"Artikel-Schlüssel"_s), column(u"Artikelname"_s, Type::Text),
             column(u"EigeneArtikelnummer"_s, Type::Text), column(u"Aktiv"_s, Type::Boolean),
             column(u"Absender-Schlüssel"_s, Type::Int), column(u"LetzteÄnderung"_s, Type::Date)},
            {{u"PrimaryKey"_s, {u"Artikel-Schlüssel"_s}, true},
             {u"Artikel-Schlüssel"_s, {u"Artikel-Schlüssel"_s}},
             {u"Absender-Schlüssel"_s, {u"Absender-Schlüssel"_s}}}};
}

CatalogueTable categories() {
    return {u"ARTIKEL/KATEGORIEN"_s,
            {keyColumn(u"Kategorie-Schlüssel"_s), column(u"Absender-Schlüssel"_s, Type::Int),
             column(u"Kategoriename"_s, Type::Text), column(u"Bezeichnung"_s, Type::Text),
             column(u"LetzteÄnderung"_s, Type::Date), column(u"Parent"_s, Type::Int), column(u"Order"_s, Type::Int),
             column(u"Aktiv"_s, Type::Boolean), optionalColumn(u"ID"_s, Type::Int)},
            {{u"PrimaryKey"_s, {u"Kategorie-Schlüssel"_s}, true},
             {u"Kategorie-Schlüssel"_s, {u"Kategorie-Schlüssel"_s}},
             {u"Parent"_s, {u"Parent"_s, u"Order"_s}}}};
}

CatalogueTable assignments() {
    return {u"ARTKAT"_s,
            {counterColumn(u"ArtKatID"_s), column(u"Artikel-Schlüssel"_s, Type::Int),
             column(u"Kategorie-Schlüssel"_s, Type::Int), column(u"Order"_s, Type::Int),
             column(u"LetzteÄnderung"_s, Type::Date)},
            {{u"ArtKatID"_s, {u"ArtKatID"_s}, true},
             {u"Artikel-Schlüssel"_s, {u"Artikel-Schlüssel"_s, u"Kategorie-Schlüssel"_s}},
             {u"Kategorie-Schlüssel"_s, {u"Kategorie-Schlüssel"_s, u"Order"_s}}}};
}

CatalogueTable priceGroups() {
    return {u"PREISGRUPPEN"_s,
            {keyColumn(u"Preisgruppen-Schlüssel"_s), column(u"Preisgruppenname"_s, Type::Text),
             column(u"Absender-Schlüssel"_s, Type::Int)},
            {{u"PrimaryKey"_s, {u"Preisgruppen-Schlüssel"_s}, true}}};
}

CatalogueTable priceLists() {
    return {u"ARTIKEL/PREISLISTEN"_s,
            {keyColumn(u"Preislisten-Schlüssel"_s), column(u"Preisgruppen-Schlüssel"_s, Type::Int),
             column(u"Preislistenname"_s, Type::Text), column(u"Währung"_s, Type::Text),
             column(u"Aktion"_s, Type::Text), column(u"GültigAb"_s, Type::Date)},
            {{u"PrimaryKey"_s, {u"Preislisten-Schlüssel"_s}, true},
             {u"Preislisten-Schlüssel"_s, {u"Preislisten-Schlüssel"_s}}}};
}

CatalogueTable prices() {
    return {u"ARTIKEL/PREISE"_s,
            {column(u"Preislisten-Schlüssel"_s, Type::Int), column(u"Artikel-Schlüssel"_s, Type::Int),
             column(u"GültigAbVerkaufsmenge"_s, Type::Double), optionalColumn(u"Preis"_s, Type::Currency)},
            {{u"Preislisten-Schlüssel"_s, {u"Preislisten-Schlüssel"_s}},
             {u"Artikel-Schlüssel"_s, {u"Artikel-Schlüssel"_s}}}};
}

bool sameName(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

int CatalogueTable::columnIndex(QStringView column) const {
    for (int i = 0; i < columns.size(); ++i)
        if (sameName(columns[i].name, column)) return i;
    return -1;
}

dao::TableDefinition CatalogueTable::definition() const {
    dao::TableDefinition result{name, {}, indexes};
    for (const CatalogueColumn& column : columns)
        result.columns.append({column.name, column.type, column.notNull, column.counter});
    return result;
}

const QList<CatalogueTable>& catalogueTables() {
    static const QList<CatalogueTable> tables = {senders(),     articles(),   categories(), assignments(),
                                                 priceGroups(), priceLists(), prices()};
    return tables;
}

int catalogueTableIndex(QStringView table) {
    const auto& tables = catalogueTables();
    for (int i = 0; i < tables.size(); ++i)
        if (sameName(tables[i].name, table)) return i;
    return -1;
}

QString columnTitle(const QString& table, const QString& column) {
    const QString owner = table.contains(u'/') ? u'[' + table + u']' : table;
    return owner + u".["_s + column + u']';
}

} // namespace mkl
