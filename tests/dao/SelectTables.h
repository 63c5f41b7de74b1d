#pragma once
// Three small tables to select from.
#include "dao/OpenedDatabase.h"

namespace dao {

/// T: five rows with a key, of all usual types and with Nulls. G: three groups. F: rows without a key, one repeated.
inline QByteArray selectTables() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT, Gruppe INTEGER, Dat DATETIME, Aktiv YESNO,"
           " Preis CURRENCY);"
           "INSERT INTO T VALUES (1, 'eins', 1, '2001-05-01 00:00:00', -1, 1.5), (2, 'ZWEI', 1, NULL, 0, 2),"
           " (3, 'drei', 2, '2002-01-01 00:00:00', -1, NULL), (4, 'zwei', 2, '2001-05-01 00:00:00', 0, 4),"
           " (5, NULL, NULL, NULL, -1, 5);"
           "CREATE TABLE G (GNr INTEGER PRIMARY KEY, Text TEXT);"
           "INSERT INTO G VALUES (1, 'a'), (2, 'b'), (3, 'c');"
           "CREATE TABLE F (x INTEGER, y TEXT);"
           "INSERT INTO F VALUES (1, 'p'), (1, 'p'), (2, 'q');";
}

struct SelectTables : OpenedDatabase {
    SelectTables()
        : OpenedDatabase(selectTables()) {}

    /// All fields of all rows: "1 eins|2 ZWEI".
    QString rows(const QString& sql) const {
        QStringList result;
        for (const auto rows = open(sql); !rows->Eof(); rows->MoveNext()) {
            QStringList fields;
            for (int i = 0; i < rows->FieldCount(); ++i)
                fields.append(rows->value(i).isNull() ? u"Null"_s : rows->value(i).toText());
            result.append(fields.join(u' '));
        }
        return result.join(u'|');
    }
};

} // namespace dao
