#pragma once
// A file of statements with what must come of each. Its format, line by line:
//
//   # a comment
//   include NAME             takes over the tables of another file
//   table NAME               followed by the columns "Name type | Name type …" and the rows "value | value …";
//                            types: counter, key, long, double, currency, yesno, date, text, any; "!" behind one
//                            forbids Null
//   ? SELECT …               a query: opened as snapshot, forward-only and dynaset
//   ! ACTION                 executed with dbFailOnError, undone afterwards
//   ~ ACTION                 the same without
//   in SOURCE                the table or SELECT for the criteria that follow
//   find CRITERION           all rows that FindFirst and FindNext reach
//
// and below each of them what is expected:
//
//   = value | value …        one row; texts stand in quotes, dates as 2001-05-01 or with a time of day
//   empty                    no row
//   names NAME | NAME …      the columns
//   affected N
//   after SELECT …           what can be read when the action is done; its rows follow
//   error N [TOKEN]          the run-time error, and the token that it names
//
// «300×(» stands for 300 parentheses, «U+0000» for that character.
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace dao {

struct CorpusTable {
    QString name;
    QStringList columns; ///< "Name type"
    QList<QStringList> rows;

    /// CREATE TABLE and INSERT of the engine.
    QByteArray native() const;
};

enum class CorpusKind { Query, StrictAction, LenientAction, Find };

struct CorpusCase {
    QString place; ///< file:line
    CorpusKind kind = CorpusKind::Query;
    QString source; ///< of a criterion
    QString text;
    std::optional<int> error;
    QString token; ///< of the error; empty if any will do
    std::optional<int> affected;
    QString after;
    QStringList names;
    QStringList rows;
    bool expectsRows = false;
};

struct CorpusFile {
    QString name;
    QList<CorpusTable> tables;
    QList<CorpusCase> cases;

    /// Reads the file; a line that says nothing is a failure of the test.
    static CorpusFile read(const QString& path);
    QByteArray native() const;
};

} // namespace dao
