#pragma once
#include "dao/Workspace.h"

#include <QList>
#include <QString>
#include <functional>

namespace mkl {

class RowSource;

/// What an import did and saw.
struct ImportReport {
    struct TableRows {
        QString table;
        qint64 rows = 0;
    };
    QList<TableRows> rows;         ///< per table of the catalogue
    QStringList passedOverTables;  ///< tables of the source that a catalogue does not know
    QStringList passedOverColumns; ///< the same for columns, as "TABLE.[Column]"
};

struct ImportOptions {
    /// Called now and then with the table, its rows so far and the expected number (-1 if unknown); false cancels.
    std::function<bool(const QString& table, qint64 rows, qint64 expected)> progress;
    /// How long the reader of an .mdb may show no sign of life before the file counts as damaged.
    int silenceMilliseconds = 15000;
    /// How a target on a server is opened.
    dao::OpenOptions target = {};
};

/// Takes a catalogue over from an .mdb or .accdb file or from a folder of CSV files. The target is a new file or an
/// existing catalogue without rows; it holds everything afterwards or is as before. Rows are taken as they are.
/// Errors: 3024 no such source, 3343 foreign file, 3049 damaged, 3011 table or column missing, 3204 target holds
/// rows, 3022 doubled key, 3059 cancelled.
ImportReport importCatalogue(const QString& source, const QString& target, const ImportOptions& options = {});

/// The same for the rows of any source.
ImportReport storeRows(RowSource& source, const QString& target, const ImportOptions& options = {});

/// True for a file name that importCatalogue reads as a database (.mdb, .accdb, .mde, .accde).
bool isImportableDatabase(const QString& file);

} // namespace mkl
