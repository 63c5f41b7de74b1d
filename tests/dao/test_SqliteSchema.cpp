#include "dao/OpenedDatabase.h"
#include "jet/model/Schema.h"

namespace dao {

using jet::ColumnType;

namespace {

const jet::Table& tableOf(const OpenedDatabase& o, const QString& name) {
    const jet::Table* table = o.database->schema().findTable(name);
    if (!table) throw std::runtime_error("no such table");
    return *table;
}

} // namespace

TEST(SqliteSchema, TablesInTheOrderOfTheFile) {
    const OpenedDatabase o(
        "CREATE TABLE Z (Nr INTEGER PRIMARY KEY AUTOINCREMENT); CREATE TABLE \"ARTIKEL/KATEGORIEN\" (x);"
        "CREATE TABLE A (x); CREATE VIEW V AS SELECT * FROM A; INSERT INTO Z VALUES (1);");
    EXPECT_EQ(o.database->tableNames(), (QStringList{u"Z"_s, u"ARTIKEL/KATEGORIEN"_s, u"A"_s}));
    EXPECT_NE(o.database->schema().findTable(u"artikel/kategorien"), nullptr);
    EXPECT_EQ(o.database->schema().findTable(u"sqlite_sequence"), nullptr);
    EXPECT_EQ(o.database->schema().findTable(u"V"), nullptr);
}

TEST(SqliteSchema, DeclaredTypes) {
    const OpenedDatabase o("CREATE TABLE T (a INTEGER, b INT, c LONG, d YesNo, e DATETIME, f DOUBLE, g REAL, h FLOAT,"
                           "i CURRENCY, j TEXT(255), k VARCHAR (50), l CHAR, m BLOB, n, o NUMERIC, p BIGINT);");
    QList<ColumnType> types;
    for (const jet::Column& column : tableOf(o, u"T"_s).columns)
        types.append(column.type);
    using enum ColumnType;
    EXPECT_EQ(types, (QList<ColumnType>{Int, Int, Int, Boolean, Date, Double, Double, Double, Currency, Text, Text,
                                        Text, Binary, Unknown, Unknown, Int}));
}

TEST(SqliteSchema, KeysAndCounters) {
    const OpenedDatabase o("CREATE TABLE A (Nr INTEGER PRIMARY KEY AUTOINCREMENT, N TEXT NOT NULL);"
                           "CREATE TABLE B (Nr INTEGER PRIMARY KEY);"
                           "CREATE TABLE C (x TEXT NOT NULL, y INTEGER NOT NULL, PRIMARY KEY (y, x));"
                           "CREATE TABLE D (x TEXT PRIMARY KEY);"
                           "CREATE TABLE E (x TEXT PRIMARY KEY) WITHOUT ROWID;"
                           "CREATE TABLE F (\"AUTOINCREMENT\" INTEGER PRIMARY KEY);");
    EXPECT_TRUE(tableOf(o, u"A"_s).columns[0].autoNumber);
    EXPECT_TRUE(tableOf(o, u"A"_s).columns[1].required);
    EXPECT_FALSE(tableOf(o, u"B"_s).columns[0].autoNumber);
    EXPECT_EQ(tableOf(o, u"B"_s).primaryKey, QList<int>{0});
    EXPECT_EQ(tableOf(o, u"C"_s).primaryKey, (QList<int>{1, 0}));
    EXPECT_EQ(tableOf(o, u"D"_s).primaryKey, QList<int>());
    EXPECT_EQ(tableOf(o, u"E"_s).primaryKey, QList<int>{0});
    EXPECT_FALSE(tableOf(o, u"F"_s).columns[0].autoNumber);
}

TEST(SqliteSchema, IndexesBearTheNamesThatProgramsUse) {
    const OpenedDatabase o(
        "CREATE TABLE ARTIKEL (\"Artikel-Schlüssel\" INTEGER PRIMARY KEY, Name TEXT, Farbe TEXT UNIQUE);"
        "CREATE UNIQUE INDEX \"ARTIKEL:PrimaryKey\" ON ARTIKEL (\"Artikel-Schlüssel\");"
        "CREATE INDEX \"artikel:Artikel-Schlüssel\" ON ARTIKEL (\"Artikel-Schlüssel\");"
        "CREATE INDEX Fremd ON ARTIKEL (Name, Farbe);"
        "CREATE INDEX \"ARTIKEL:Teil\" ON ARTIKEL (Name) WHERE Name > 'm';"
        "CREATE INDEX \"ARTIKEL:Ausdruck\" ON ARTIKEL (lower(Name));"
        "CREATE TABLE ARTKAT (ArtKatID INTEGER PRIMARY KEY);"
        "CREATE UNIQUE INDEX \"ARTKAT:ArtKatID\" ON ARTKAT (ArtKatID);"
        "CREATE TABLE B (Nr INTEGER PRIMARY KEY);");
    const jet::Table& articles = tableOf(o, u"artikel"_s);
    QStringList names;
    for (const jet::Index& index : articles.indexes)
        names.append(index.name);
    EXPECT_EQ(names, (QStringList{u"PrimaryKey"_s, u"Artikel-Schlüssel"_s, u"Fremd"_s}));
    EXPECT_TRUE(articles.index(u"primarykey")->primary);
    EXPECT_FALSE(articles.index(u"Artikel-Schlüssel")->primary);
    EXPECT_EQ(articles.index(u"Fremd")->columns, (QList<int>{1, 2}));
    EXPECT_TRUE(tableOf(o, u"ARTKAT"_s).index(u"ArtKatID")->primary);
    EXPECT_EQ(tableOf(o, u"ARTKAT"_s).indexes.size(), 1);
    EXPECT_TRUE(tableOf(o, u"B"_s).index(u"PrimaryKey")->primary);
}

} // namespace dao
