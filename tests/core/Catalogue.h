#pragma once
// A small catalogue in a file of its own, opened through the data layer.
#include "dao/Workspace.h"
#include "support/TempDatabase.h"

namespace mkl {

/// Categories 1 "Schrauben" and 3 "Holz" at the top, 2 "Muttern" below 1, all named and placed; articles 10 to 13, of
/// which 13 is in no category and 12 is not active.
struct Catalogue {
    TempDatabase file{R"(
        CREATE TABLE ARTIKEL ("Artikel-Schlüssel" INTEGER PRIMARY KEY, Artikelname TEXT, Aktiv YESNO,
                              "Absender-Schlüssel" INTEGER, "LetzteÄnderung" DATETIME);
        CREATE TABLE "ARTIKEL/KATEGORIEN" ("Kategorie-Schlüssel" INTEGER PRIMARY KEY, "Absender-Schlüssel" INTEGER,
                              Kategoriename TEXT, Parent INTEGER, "Order" INTEGER, Aktiv YESNO,
                              "LetzteÄnderung" DATETIME);
        CREATE TABLE ARTKAT (ArtKatID INTEGER PRIMARY KEY AUTOINCREMENT, "Artikel-Schlüssel" INTEGER,
                             "Kategorie-Schlüssel" INTEGER, "Order" INTEGER, "LetzteÄnderung" DATETIME);
        INSERT INTO ARTIKEL VALUES (10, 'Bolzen', -1, 3, NULL), (11, 'Anker', -1, 3, NULL),
                                   (12, 'Dübel', 0, 7, NULL), (13, 'Ösen', -1, 3, NULL);
        INSERT INTO "ARTIKEL/KATEGORIEN" VALUES (1, 3, 'Schrauben', NULL, 2, -1, NULL),
                                   (2, 7, 'Muttern', 1, 1, -1, NULL), (3, 7, 'Holz', NULL, 1, 0, NULL);
        INSERT INTO ARTKAT VALUES (1, 10, 1, 2, '2024-05-01 10:00:00'), (2, 11, 1, 1, NULL),
                                  (3, 10, 2, 1, NULL), (4, 12, 2, 2, NULL);
    )"};
    Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    Ref<dao::Database> database = workspace->OpenDatabase(file.path());

    /// The first column of a statement's rows.
    QList<Variant> column(const QString& sql) const {
        QList<Variant> values;
        for (const auto rows = database->OpenRecordset(sql, dao::dbOpenSnapshot); !rows->Eof(); rows->MoveNext())
            values.append(rows->value(0));
        return values;
    }
};

} // namespace mkl
