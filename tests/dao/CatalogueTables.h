#pragma once
// Three small tables of a catalogue: articles, categories, and which article stands in which category.
#include "dao/OpenedDatabase.h"

namespace dao {

inline QByteArray catalogueTables() {
    return "CREATE TABLE ARTIKEL (\"Artikel-Schlüssel\" INTEGER PRIMARY KEY, Artikelname TEXT, Aktiv YESNO,"
           " LetzteÄnderung DATETIME);"
           "CREATE TABLE KATEGORIEN (Nr INTEGER PRIMARY KEY, Name TEXT);"
           "CREATE TABLE ARTKAT (ArtKatID INTEGER PRIMARY KEY AUTOINCREMENT, \"Artikel-Schlüssel\" INTEGER,"
           " \"Kategorie-Schlüssel\" INTEGER, \"Order\" INTEGER, LetzteÄnderung DATETIME);"
           "INSERT INTO ARTIKEL VALUES (1, 'Zange', -1, NULL), (2, 'Äpfel', -1, NULL), (3, 'Birne', 0, NULL),"
           " (4, 'Öl', -1, NULL);"
           "INSERT INTO KATEGORIEN VALUES (7, 'Obst'), (8, 'Werkzeug');"
           "INSERT INTO ARTKAT VALUES (10, 1, 7, 1, NULL), (11, 2, 7, 2, NULL), (12, 3, 7, 3, NULL), (13, 4, 7, 4, "
           "NULL),"
           " (14, 1, 8, 1, NULL);";
}

/// The articles of category 7 in their order, as a list shows them.
inline QString listStatement() {
    return QStringLiteral("SELECT ARTKAT.ArtKatID, ARTKAT.[Artikel-Schlüssel], Order, Artikelname, "
                          "ARTKAT.LetzteÄnderung, ARTIKEL.LetzteÄnderung FROM ARTIKEL INNER JOIN ARTKAT ON "
                          "ARTIKEL.[Artikel-Schlüssel] = ARTKAT.[Artikel-Schlüssel] "
                          "WHERE [Kategorie-Schlüssel]=7 ORDER BY Order");
}

} // namespace dao
