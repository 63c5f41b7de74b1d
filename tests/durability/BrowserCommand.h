#pragma once
// The commands of the browser as data: the catalogue, the screen, how the user gives the command, and what is left of
// it by the procedure that reports a failure.
#include "CommandHost.h"

#include <QMap>
#include <functional>
#include <map>
#include <ostream>

namespace mkl {

enum class Stored : quint8 {
    Before, ///< the rows are as they were
    After,  ///< as after the whole command
    Part,   ///< what the failed procedure had done, and all of the other ones
};

enum class ListShows : quint8 {
    AsBefore,        ///< the very rows that it showed
    Reread,          ///< new rows, as they are stored
    Nothing,         ///< its read has failed
    RereadOrNothing, ///< it is read twice, and one of the reads has failed
    Anything,        ///< a read of the tree has failed somewhere, which reads the list behind it
};

/// What is left where a procedure is the first one to report a failure. Further reports are told as an expression over
/// the procedures, each with a blank behind it; by default there are none.
struct Outcome {
    Stored stored = Stored::Before;
    bool edited = false;
    ListShows list = ListShows::AsBefore;
    bool behindCommit = false; ///< it is reached behind the commit, else not behind it
    bool eachRow = false;      ///< … or in between: every row has a commit, and nothing undoes what has one
    bool treeIsTrue = true;    ///< the tree shows what is stored
    QString then = {};         ///< who reports too, since the procedure's result is lacking
    /// The same where the engine gave the transaction up, so that all later writes and the commit fail. Before the
    /// commit the rows are then as they were, nothing is edited, and the list stands.
    QString thenGivenUp = {};
    QString thenLost = {}; ///< the same where every read fails too
};

struct Assignment {
    Long article = 0;
    Long category = 0;
    Long order = 0;
    bool changed = false; ///< has the date of the standing clock
    bool operator==(const Assignment&) const = default;
};

/// A category.
struct CategoryState {
    QString name;
    Long parent = 0; ///< 0 at the top
    Long order = 0;
    bool active = true;
    bool changed = false;
    bool operator==(const CategoryState&) const = default;
};

/// The tables in which the states in between are told, by ArtKatID and by key.
struct CatalogueRows {
    std::map<Long, Assignment> assignments;
    std::map<Long, CategoryState> categories;
    bool operator==(const CatalogueRows&) const = default;
};

struct BrowserCommand {
    const char* name;
    QString picture;
    std::function<void(CommandHost&)> screen; ///< behind the read of the panes
    std::function<void(CommandHost&)> run = {};
    Outcome done = {};                    ///< without a failure
    QMap<QString, Outcome> failures = {}; ///< by the procedure that reports first
    /// The rows where that procedure failed and its caller went on; all that may be left.
    std::function<QList<CatalogueRows>(const CatalogueRows& before, const QString& procedure)> parts = {};
    int levelsLeftOpen = 0; ///< by a run without a failure
    bool readsTreeAfterFailure = false;
    bool silentBefore = false;  ///< a statement before the transaction may fail without a word
    bool oneTransaction = true; ///< else each row is stored by itself
    bool changes = true;        ///< whether such a run stores anything

    /// What is left where the whole transaction is undone; lost: and nothing can be read.
    Outcome undone(bool lost) const;
};

void PrintTo(const BrowserCommand& command, std::ostream* out);

/// Category 41 with so many articles in no order of their names, an empty one 42 below, 43 with some of the same, and
/// further ones.
QString shopPicture(int articles);

QList<BrowserCommand> assignmentCommands(int articles);
QList<BrowserCommand> categoryCommands(int articles);
QList<BrowserCommand> orderCommands(int articles);
QList<BrowserCommand> activationCommands(int articles);
QList<BrowserCommand> transferCommands(int articles);
/// All of them, on a catalogue of that many articles.
QList<BrowserCommand> browserCommands(int articles);

} // namespace mkl
