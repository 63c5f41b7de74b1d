#include "dao/OpenedDatabase.h"

namespace dao {

namespace {

QByteArray priceLists() {
    return "CREATE TABLE GRUPPEN (Nr INTEGER PRIMARY KEY, Name TEXT);"
           "INSERT INTO GRUPPEN VALUES (1, 'Händler'), (2, 'Kunden');"
           "CREATE TABLE \"ARTIKEL/PREISLISTEN\" (Liste INTEGER PRIMARY KEY, Nr INTEGER, Name TEXT, GültigAb DATETIME);"
           "INSERT INTO \"ARTIKEL/PREISLISTEN\" VALUES (10, 1, 'öl', '2001-01-01 00:00:00'),"
           "(11, 1, 'Zange', NULL), (12, 2, 'Oel', '2003-01-01 00:00:00'), (13, 1, 'ofen', '2002-01-01 00:00:00');";
}

const QString lists = u"ARTIKEL/PREISLISTEN"_s;

QStringList derivedRows(const Ref<Recordset>& rows, const QString& filter, const QString& sort, Long type = 0) {
    rows->setFilter(filter);
    rows->setSort(sort);
    return OpenedDatabase::walk(rows->OpenRecordset(type));
}

} // namespace

TEST(FilterSort, ActOnTheDerivedSetAlone) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows = o.open(lists);
    rows->setFilter(u"Nr=1"_s);
    rows->setSort(u"Name DESC"_s);
    EXPECT_EQ(rows->Filter(), u"Nr=1"_s);
    EXPECT_EQ(rows->Sort(), u"Name DESC"_s);
    EXPECT_EQ(OpenedDatabase::walk(rows), (QStringList{u"10"_s, u"11"_s, u"12"_s, u"13"_s}));
    const Ref<Recordset> derived = rows->OpenRecordset();
    EXPECT_EQ(derived->Type(), dbOpenSnapshot);
    EXPECT_EQ(derived->Filter(), QString());
    EXPECT_EQ(derived->Sort(), QString());
    EXPECT_EQ(derived->RecordCount(), 1);
    EXPECT_EQ(OpenedDatabase::walk(derived), (QStringList{u"11"_s, u"10"_s, u"13"_s}));
    EXPECT_EQ(derived->RecordCount(), 3);
}

TEST(FilterSort, Orders) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows = o.open(lists);
    EXPECT_EQ(derivedRows(rows, {}, u"[GültigAb]"_s), (QStringList{u"11"_s, u"10"_s, u"13"_s, u"12"_s}));
    EXPECT_EQ(derivedRows(rows, {}, u"[GültigAb] DESC"_s), (QStringList{u"12"_s, u"13"_s, u"10"_s, u"11"_s}));
    EXPECT_EQ(derivedRows(rows, {}, u"Nr DESC, Name"_s), (QStringList{u"12"_s, u"13"_s, u"10"_s, u"11"_s}));
    EXPECT_EQ(derivedRows(rows, {}, u"Nr"_s), (QStringList{u"10"_s, u"11"_s, u"13"_s, u"12"_s}));
    EXPECT_EQ(derivedRows(rows, {}, {}), (QStringList{u"10"_s, u"11"_s, u"12"_s, u"13"_s}));
}

TEST(FilterSort, FilterWithoutAnyRow) {
    const OpenedDatabase o(priceLists());
    for (const Long type : {dbOpenSnapshot, dbOpenForwardOnly}) {
        const Ref<Recordset> rows = o.open(lists);
        rows->setFilter(u"Nr=99"_s);
        const Ref<Recordset> derived = rows->OpenRecordset(type);
        EXPECT_TRUE(derived->Eof());
        EXPECT_TRUE(derived->Bof());
        EXPECT_EQ(derived->RecordCount(), 0);
        const Ref<Recordset> again = derived->OpenRecordset();
        EXPECT_TRUE(again->Eof());
    }
}

TEST(FilterSort, TypesOfTheDerivedSet) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows = o.open(lists);
    EXPECT_EQ(rows->OpenRecordset(dbOpenForwardOnly)->Type(), dbOpenForwardOnly);
    EXPECT_EQ(rows->OpenRecordset(dbOpenSnapshot)->Type(), dbOpenSnapshot);
    EXPECT_EQ(errorOf([&] { rows->OpenRecordset(dbOpenTable); }), 3219);
    EXPECT_EQ(errorOf([&] { rows->OpenRecordset(dbOpenDynaset); }), 3219);
    EXPECT_EQ(errorOf([&] { rows->OpenRecordset(3); }), 5);
    const Ref<Recordset> once = o.open(lists, dbOpenForwardOnly);
    once->setFilter(u"Nr=2"_s);
    EXPECT_EQ(once->OpenRecordset()->Type(), dbOpenForwardOnly);
    EXPECT_EQ(OpenedDatabase::walk(once->OpenRecordset()), (QStringList{u"12"_s}));
}

TEST(FilterSort, OfADerivedSetKeepBoth) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows = o.open(lists);
    rows->setFilter(u"Nr=1"_s);
    rows->setSort(u"GültigAb DESC"_s);
    const Ref<Recordset> derived = rows->OpenRecordset();
    derived->setFilter(u"Not GültigAb Is Null"_s);
    const Ref<Recordset> second = derived->OpenRecordset();
    EXPECT_EQ(OpenedDatabase::walk(second), (QStringList{u"13"_s, u"10"_s}));
    o.database->Execute(u"INSERT INTO [ARTIKEL/PREISLISTEN] VALUES (14, 1, 'neu', #1/1/2009#)"_s, dbFailOnError);
    o.database->Execute(u"INSERT INTO [ARTIKEL/PREISLISTEN] VALUES (15, 2, 'neu', #1/1/2009#)"_s, dbFailOnError);
    second->Requery();
    EXPECT_EQ(OpenedDatabase::walk(second), (QStringList{u"14"_s, u"13"_s, u"10"_s}));
}

TEST(FilterSort, RowsAreThoseOfTheParent) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows = o.open(lists);
    o.database->Execute(u"DELETE FROM [ARTIKEL/PREISLISTEN]"_s, dbFailOnError);
    EXPECT_EQ(derivedRows(rows, u"Nr=2"_s, {}), (QStringList{u"12"_s}));
}

TEST(FilterSort, DerivedSetsFindAndGiveBookmarks) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows = o.open(lists);
    rows->setSort(u"Liste DESC"_s);
    const Ref<Recordset> derived = rows->OpenRecordset();
    derived->FindFirst(u"Nr=1");
    EXPECT_EQ(derived->value(0), Variant(13));
    EXPECT_EQ(derived->AbsolutePosition(), 0);
    derived->FindNext(u"Nr=1");
    EXPECT_EQ(derived->value(0), Variant(11));
    EXPECT_EQ(errorOf([&] { rows->setBookmark(derived->Bookmark()); }), 3159);
    const Ref<Recordset> clone = derived->Clone();
    clone->setBookmark(derived->Bookmark());
    EXPECT_EQ(clone->value(0), Variant(11));
}

// A bare name is an output column first, a qualified one a column of that table.
TEST(FilterSort, NamesOfAGroupedJoin) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows =
        o.open(u"SELECT [ARTIKEL/PREISLISTEN].Nr, GRUPPEN.Name, Liste, GültigAb FROM GRUPPEN INNER JOIN"
               " [ARTIKEL/PREISLISTEN] ON GRUPPEN.Nr = [ARTIKEL/PREISLISTEN].Nr GROUP BY [ARTIKEL/PREISLISTEN].Nr,"
               " GRUPPEN.Name, Liste, GültigAb ORDER BY Liste"_s);
    rows->setFilter(u"[ARTIKEL/PREISLISTEN].Nr=1"_s);
    rows->setSort(u"[GültigAb] DESC"_s);
    const Ref<Recordset> derived = rows->OpenRecordset(dbOpenForwardOnly);
    QStringList found;
    for (; !derived->Eof(); derived->MoveNext())
        found.append(derived->value(u"Liste").toText());
    EXPECT_EQ(found, (QStringList{u"13"_s, u"10"_s, u"11"_s}));
    EXPECT_EQ(derivedRows(rows, u"Nr=2 And Name='kunden'"_s, {}).size(), 1);
    rows->setFilter(u"GRUPPEN.Farbe=1"_s);
    EXPECT_EQ(errorOf([&] { rows->OpenRecordset(); }), 3070);
}

TEST(FilterSort, Errors) {
    const OpenedDatabase o(priceLists());
    const Ref<Recordset> rows = o.open(lists);
    const auto errorOfDerived = [&](const QString& filter, const QString& sort) {
        rows->setFilter(filter);
        rows->setSort(sort);
        return errorOf([&] { rows->OpenRecordset(); });
    };
    EXPECT_EQ(errorOfDerived(u"Nr="_s, {}), 3077);
    EXPECT_EQ(errorOfDerived(u"Farbe=1"_s, {}), 3070);
    EXPECT_EQ(errorOfDerived(u"Nr='1'"_s, {}), 3464);
    EXPECT_EQ(errorOfDerived({}, u"Farbe"_s), 3070);
    EXPECT_EQ(errorOfDerived({}, u"Nr,"_s), 3138);
    const Ref<Recordset> table = o.open(lists, dbOpenTable);
    EXPECT_EQ(errorOf([&] { table->setSort(u"Nr"_s); }), 3251);
    EXPECT_EQ(errorOf([&] { table->Sort(); }), 3251);
    EXPECT_EQ(errorOf([&] { table->setFilter(u"Nr=1"_s); }), 3251);
}

} // namespace dao
