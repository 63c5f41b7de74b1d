#include "TestCatalogue.h"
#include "catalogue/CatalogueSchema.h"
#include "catalogue/CatalogueTables.h"
#include "support/Printing.h"

#include <QDir>
#include <QFile>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

QString complaintAbout(dao::Database& database) {
    try {
        CatalogueSchema::verify(database);
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3011);
        return error.description();
    }
    return {};
}

Variant one(dao::Database& database, const QString& query) {
    return database.OpenRecordset(query, dao::dbOpenSnapshot)->value(0);
}

} // namespace

TEST(CatalogueSchema, aNewCatalogueIsWholeAndEmpty) {
    TestCatalogue catalogue;
    EXPECT_EQ(complaintAbout(catalogue.database()), QString());
    EXPECT_TRUE(CatalogueSchema::isEmpty(catalogue.database()));
    EXPECT_EQ(catalogue.database().tableNames().size(), catalogueTables().size());
    catalogue.addArticle(1);
    EXPECT_FALSE(CatalogueSchema::isEmpty(catalogue.database()));
}

TEST(CatalogueSchema, programsFindTheIndexesByTheirNames) {
    TestCatalogue catalogue;
    catalogue.addArticle(4711);
    catalogue.addCategory(13, "NULL", 1);
    catalogue.assign(47, 4711, 13, 1);
    const struct {
        QString table, index;
        Long key;
    } seeks[] = {{u"ARTIKEL"_s, u"PrimaryKey"_s, 4711},
                 {u"ARTIKEL"_s, u"Artikel-Schlüssel"_s, 4711},
                 {u"ARTKAT"_s, u"ArtKatID"_s, 47},
                 {u"ARTIKEL/KATEGORIEN"_s, u"PrimaryKey"_s, 13},
                 {u"ARTIKEL/KATEGORIEN"_s, u"Kategorie-Schlüssel"_s, 13}};
    for (const auto& [table, index, key] : seeks) {
        const auto rows = catalogue.database().OpenRecordset(table, dao::dbOpenTable);
        rows->setIndex(index);
        rows->Seek(u"=", Variant(key));
        EXPECT_FALSE(rows->NoMatch()) << table.toStdString() << ':' << index.toStdString();
        rows->Seek(u"=", Variant(key + 1));
        EXPECT_TRUE(rows->NoMatch()) << table.toStdString() << ':' << index.toStdString();
    }
    for (const auto& [table, index] : {std::pair(u"ABSENDER"_s, u"Absender-Schlüssel"_s),
                                       std::pair(u"ARTIKEL/PREISLISTEN"_s, u"Preislisten-Schlüssel"_s)})
        catalogue.database().OpenRecordset(table, dao::dbOpenTable)->setIndex(index);
}

TEST(CatalogueSchema, aKeyIsUniqueAndNeverNull) {
    TestCatalogue catalogue;
    auto& database = catalogue.database();
    const QString insert = u"INSERT INTO ARTIKEL ([Artikel-Schlüssel], [Artikelname]) VALUES (%1, 'x')"_s;
    database.Execute(insert.arg(1), dao::dbFailOnError);
    EXPECT_EQ(errorOf([&] { database.Execute(insert.arg(1), dao::dbFailOnError); }), 3022);
    EXPECT_NE(errorOf([&] { database.Execute(insert.arg(u"Null"_s), dao::dbFailOnError); }), 0);
    EXPECT_EQ(one(database, u"SELECT Count(*) FROM ARTIKEL"_s).toLong(), 1);
}

TEST(CatalogueSchema, theCounterNeverGivesAKeyTwice) {
    TestCatalogue catalogue;
    auto& database = catalogue.database();
    const QString insert = u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel]) VALUES (1, 1)"_s;
    database.Execute(insert, dao::dbFailOnError);
    database.Execute(u"DELETE FROM ARTKAT"_s, dao::dbFailOnError);
    database.Execute(insert, dao::dbFailOnError);
    EXPECT_EQ(one(database, u"SELECT [ArtKatID] FROM ARTKAT"_s), Variant(2));
}

TEST(CatalogueSchema, assignmentsGoWithTheirCategory) {
    TestCatalogue catalogue;
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "NULL", 2);
    catalogue.assign(1, 5, 13, 1); // no such article, which nothing forbids
    catalogue.assign(2, 5, 23, 1);
    catalogue.assign(3, 5, 99, 1); // nor such a category
    auto& database = catalogue.database();
    database.Execute(u"DELETE FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=13"_s, dao::dbFailOnError);
    EXPECT_EQ(database.RecordsAffected(), 1);
    EXPECT_EQ(one(database, u"SELECT Sum([ArtKatID]) FROM ARTKAT"_s).toLong(), 5);
}

TEST(CatalogueSchema, otherToolsCanOpenTheFileWhileProgramsWork) {
    TestCatalogue catalogue;
    QFile file(catalogue.path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray head = file.read(20);
    EXPECT_TRUE(head.startsWith("SQLite format 3"));
    EXPECT_EQ(head[18], 2) << "write-ahead log";
}

TEST(CatalogueSchema, missingTablesAndColumnsAreNamed) {
    TestCatalogue catalogue;
    catalogue.run(u"ALTER TABLE \"ARTIKEL/PREISLISTEN\" DROP COLUMN \"Währung\""_s);
    EXPECT_TRUE(complaintAbout(catalogue.database()).contains(u"[ARTIKEL/PREISLISTEN].[Währung]"));
    catalogue.run(u"DROP TABLE ARTKAT"_s);
    EXPECT_TRUE(complaintAbout(catalogue.database()).contains(u"'ARTKAT'"));
}

TEST(CatalogueSchema, priceAndForeignNumberMayBeMissing) {
    TestCatalogue catalogue;
    catalogue.run(u"ALTER TABLE \"ARTIKEL/PREISE\" DROP COLUMN \"Preis\";"
                  "ALTER TABLE \"ARTIKEL/KATEGORIEN\" DROP COLUMN \"ID\""_s);
    EXPECT_EQ(complaintAbout(catalogue.database()), QString());
}

TEST(CatalogueFile, anExistingFileIsNeverOverwritten) {
    TestCatalogue catalogue;
    EXPECT_EQ(errorOf([&] { createCatalogue(catalogue.path()); }), 3204);
}

TEST(CatalogueFile, aDraftThatIsNotPublishedLeavesNothing) {
    const QTemporaryDir folder;
    { CatalogueDraft draft(folder.filePath(u"a"_s)); }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(CatalogueFile, whoeverCameFirstKeepsTheName) {
    const QTemporaryDir folder;
    CatalogueDraft draft(folder.filePath(u"a"_s));
    createCatalogue(folder.filePath(u"a"_s));
    EXPECT_EQ(errorOf([&] { draft.publish(); }), 3204);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a"_s});
}

TEST(CatalogueFile, anImpossibleFolderIsAnError) {
    const QTemporaryDir folder;
    EXPECT_NE(errorOf([&] { createCatalogue(folder.filePath(u"fehlt/a"_s)); }), 0);
}
