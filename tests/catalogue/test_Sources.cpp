#include "CollectedRows.h"
#include "catalogue/CsvSource.h"
#include "catalogue/ReaderProcess.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30000;

CollectedRows rowsOfMdb() {
    CollectedRows rows;
    ReaderProcess(testData(u"catalogue-small.mdb"_s), patience).readInto(rows);
    return rows;
}

CollectedRows rowsOfCsv(const QString& folder = testData(u"csv-small"_s)) {
    CollectedRows rows;
    CsvSource(folder).readInto(rows);
    return rows;
}

QString descriptionOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const RunTimeError& error) {
        return error.description();
    }
    return {};
}

} // namespace

TEST(Sources, databaseAndCsvHoldTheSameRows) {
    const CollectedRows mdb = rowsOfMdb(), csv = rowsOfCsv();
    ASSERT_EQ(mdb.tables.size(), catalogueTables().size());
    for (const CatalogueTable& table : catalogueTables()) {
        EXPECT_TRUE(mdb.tables[table.name].ended && csv.tables[table.name].ended);
        EXPECT_EQ(mdb.tables[table.name].expected, mdb.tables[table.name].rows.size()) << table.name.toStdString();
        EXPECT_EQ(mdb.sorted(table.name), csv.sorted(table.name)) << table.name.toStdString();
    }
    EXPECT_TRUE(mdb.passedOver.isEmpty());
}

TEST(Sources, nullAndEmptyTextAreTwoThings) {
    int nulls = 0, empties = 0;
    const CollectedRows rows = rowsOfMdb();
    for (const auto& row : rows.tables[u"ARTIKEL"_s].rows) {
        nulls += row[2].isNull();
        empties += !row[2].isNull() && row[2].toText().isEmpty();
    }
    EXPECT_EQ(nulls, 2);
    EXPECT_EQ(empties, 1);
}

TEST(CsvSource, columnsAreFoundByNameWithoutCaseInAnyOrder) {
    const CsvFolder folder;
    folder.write(u"PREISGRUPPEN"_s, "\"PREISGRUPPENNAME\",\"Farbe\",\"absender-schlÜssel\",\"Preisgruppen-Schlüssel\"\n"
                                    "\"Ä\",\"rot\",,7\n");
    const CollectedRows rows = rowsOfCsv(folder.path());
    const QList<QList<Variant>> expected = {{Variant(7), Variant(u"Ä"_s), Variant()}};
    EXPECT_EQ(rows.tables[u"PREISGRUPPEN"_s].rows, expected);
    EXPECT_EQ(rows.passedOver, QStringList{u"PREISGRUPPEN.[Farbe]"_s});
}

TEST(CsvSource, unknownFilesAreNamed) {
    const CsvFolder folder;
    folder.write(u"KUNDEN"_s, "\"Name\"\n");
    EXPECT_EQ(rowsOfCsv(folder.path()).passedOver, QStringList{u"KUNDEN"_s});
}

TEST(CsvSource, missingTableAndColumnAreNamed) {
    CsvFolder folder;
    folder.write(u"ARTIKEL/KATEGORIEN"_s, folder.read(u"ARTIKEL/KATEGORIEN"_s).replace("\"Parent\"", "\"Eltern\""));
    EXPECT_TRUE(descriptionOf([&] { rowsOfCsv(folder.path()); }).contains(u"[ARTIKEL/KATEGORIEN].[Parent]"));
    QFile::remove(folder.path(u"ARTIKEL/KATEGORIEN"_s));
    EXPECT_TRUE(descriptionOf([&] { rowsOfCsv(folder.path()); }).contains(u"'ARTIKEL/KATEGORIEN'"));
    EXPECT_EQ(errorOf([&] { rowsOfCsv(folder.path()); }), 3011);
}

TEST(CsvSource, doubledColumnIsRefused) {
    const CsvFolder folder;
    folder.write(u"ABSENDER"_s, "\"Absender-Schlüssel\",\"ABSENDER-SCHLÜSSEL\"\n3,3\n");
    EXPECT_EQ(errorOf([&] { rowsOfCsv(folder.path()); }), 3049);
}

TEST(CsvSource, impossibleValuesAreRefused) {
    const CsvFolder folder;
    for (const QByteArray value : {"2147483648", "-2147483649", "1.5", "x", "\"\"", "1e3"}) {
        folder.write(u"ABSENDER"_s, "\"Absender-Schlüssel\"\n" + value + "\n");
        EXPECT_EQ(errorOf([&] { rowsOfCsv(folder.path()); }), 3049) << value.toStdString();
    }
    for (const QByteArray price : {"1.23456", "1.", "1,5", "922337203685477.5808", "a"}) {
        folder.write(u"ABSENDER"_s, "\"Absender-Schlüssel\"\n");
        folder.write(u"ARTIKEL/PREISE"_s, "\"Preislisten-Schlüssel\",\"Artikel-Schlüssel\",\"GültigAbVerkaufsmenge\","
                                          "\"Preis\"\n1,1,1," +
                                              price + "\n");
        EXPECT_EQ(errorOf([&] { rowsOfCsv(folder.path()); }), 3049) << price.toStdString();
    }
}

TEST(CsvSource, currencyIsExactOverItsWholeRange) {
    const CsvFolder folder;
    folder.write(u"ARTIKEL/PREISE"_s,
                 "\"Preislisten-Schlüssel\",\"Artikel-Schlüssel\",\"GültigAbVerkaufsmenge\",\"Preis\"\n"
                 "1,1,1,922337203685477.5807\n1,1,2,-922337203685477.5808\n1,1,3,0.1\n1,1,4,7\n");
    const CollectedRows rows = rowsOfCsv(folder.path());
    QList<qint64> prices;
    for (const auto& row : rows.tables[u"ARTIKEL/PREISE"_s].rows)
        prices.append(row[3].toCurrency());
    EXPECT_EQ(prices,
              (QList<qint64>{std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min(), 1000, 70000}));
}

TEST(CsvSource, aFolderWithoutTablesIsRefused) {
    const QTemporaryDir empty;
    EXPECT_EQ(errorOf([&] { rowsOfCsv(empty.path()); }), 3343);
    const CsvFolder folder;
    folder.write(u"ABSENDER"_s, "");
    EXPECT_EQ(errorOf([&] { rowsOfCsv(folder.path()); }), 3343);
}
