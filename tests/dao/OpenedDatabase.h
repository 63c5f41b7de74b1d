#pragma once
// A temporary database opened through the data layer, and short ways to ask it.
#include "base/Variant.h"
#include "dao/Workspace.h"
#include "support/Printing.h"
#include "support/TempDatabase.h"

#include <QStringList>
#include <gmock/gmock.h>

namespace dao {

using namespace Qt::StringLiterals;
using mkl::errorOf;
using mkl::Ref;
using mkl::TempDatabase;
using mkl::Variant;

struct OpenedDatabase {
    explicit OpenedDatabase(const QByteArray& nativeSql, const OpenOptions& options = {})
        : file(nativeSql)
        , database(workspace->OpenDatabase(file.path(), options)) {}

    Ref<Recordset> open(const QString& source, Long type = dbOpenSnapshot) const {
        return database->OpenRecordset(source, type);
    }
    /// The first field of the first row.
    Variant one(const QString& sql) const { return open(sql)->value(0); }
    /// The first fields of all rows as texts, "Null" for Null.
    QStringList all(const QString& sql) const { return walk(open(sql)); }
    static QStringList walk(const Ref<Recordset>& rows) {
        QStringList result;
        for (; !rows->Eof(); rows->MoveNext())
            result.append(rows->value(0).isNull() ? u"Null"_s : rows->value(0).toText());
        return result;
    }
    Long errorOfQuery(const QString& sql) const {
        return errorOf([&] { open(sql); });
    }
    Long errorOfExecute(const QString& sql, Long options = dbFailOnError) const {
        return errorOf([&] { database->Execute(sql, options); });
    }

    TempDatabase file;
    Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    Ref<Database> database;
};

/// Rows 1, 2, 3, … of a table T with a key and a name.
inline QByteArray threeRows() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);"
           "INSERT INTO T VALUES (1, 'eins'), (2, 'zwei'), (3, 'drei');";
}

} // namespace dao
