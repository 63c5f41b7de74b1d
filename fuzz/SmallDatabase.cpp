#include "SmallDatabase.h"

#include "dao/sqlite/SqliteFile.h"

namespace fuzz {

using namespace Qt::StringLiterals;

namespace {

const QString tables =
    u"CREATE TABLE TYPEN (lng INTEGER PRIMARY KEY, dbl DOUBLE, txt TEXT, yn YESNO, dat DATETIME, cur CURRENCY);"
    "INSERT INTO TYPEN VALUES (1, 0.5, 'Öhl', -1, '2001-05-01 00:00:00', 12.5), (2, NULL, 'oehl', 0, NULL, NULL),"
    "(3, -1e300, '', -1, '1899-12-30 06:00:00', -0.0001), (13, 7, '12', 0, '2000-02-29 23:59:59', 922337203685.4775);"
    "CREATE TABLE ARTIKEL (\"Artikel-Schlüssel\" INTEGER PRIMARY KEY, Artikelname TEXT NOT NULL,"
    "Aktiv YESNO DEFAULT -1, \"Absender-Schlüssel\" INTEGER);"
    "INSERT INTO ARTIKEL VALUES (10, 'Maß', -1, 3), (20, 'mass', 0, NULL), (33, 'co-op', -1, 3);"
    "CREATE TABLE ARTKAT (ArtKatID INTEGER PRIMARY KEY AUTOINCREMENT, \"Artikel-Schlüssel\" INTEGER,"
    "\"Kategorie-Schlüssel\" INTEGER, \"Order\" INTEGER, \"LetzteÄnderung\" DATETIME);"
    "INSERT INTO ARTKAT VALUES (1, 10, 7, 1, NULL), (2, 20, 7, 2, '2001-01-01 00:00:00'), (3, 10, 9, NULL, NULL);"
    "CREATE TABLE \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\" INTEGER PRIMARY KEY, Kategoriename TEXT,"
    "Parent INTEGER, \"Order\" INTEGER, Aktiv YESNO, \"Absender-Schlüssel\" INTEGER);"
    "INSERT INTO \"ARTIKEL/KATEGORIEN\" VALUES (7, 'Geräte', NULL, 1, -1, 3), (9, 'klein', 7, 1, 0, 7);"_s;

} // namespace

SmallDatabase::SmallDatabase()
    : connection_(dao::createSqlite(folder_.filePath(u"fuzz.sqlite"_s)))
    , database_(mkl::makeRef<dao::Database>(u"fuzz.sqlite"_s, connection_)) {
    database_->executeNative(u"PRAGMA synchronous=OFF;"_s + tables);
}

qsizetype SmallDatabase::tablesIn(const QByteArray& native) {
    return native.count("\"TYPEN\"") + native.count("\"ARTIKEL\"") + native.count("\"ARTKAT\"") +
           native.count("\"ARTIKEL/KATEGORIEN\"");
}

} // namespace fuzz
