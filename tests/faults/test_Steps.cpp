// What the data layer leaves when a statement, a write or the whole process fails in the middle.
#include "StepCase.h"

#include "support/Printing.h"

#include <iostream>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

Step execute(const QString& sql) {
    return [sql](dao::Workspace&, dao::Database& database) { database.Execute(sql, dao::dbFailOnError); };
}

/// The statements in one transaction.
Step together(const QStringList& statements) {
    return [statements](dao::Workspace& workspace, dao::Database& database) {
        workspace.BeginTrans();
        for (const QString& sql : statements)
            database.Execute(sql, dao::dbFailOnError);
        workspace.CommitTrans();
    };
}

// An inner level that is undone, one that is kept, and work of the outer one around them.
void nest(dao::Workspace& workspace, dao::Database& database) {
    workspace.BeginTrans();
    database.Execute(u"UPDATE T SET Pos=Pos+1 WHERE Nr<10"_s, dao::dbFailOnError);
    workspace.BeginTrans();
    database.Execute(u"DELETE FROM T WHERE Nr>20"_s, dao::dbFailOnError);
    workspace.Rollback();
    workspace.BeginTrans();
    database.Execute(u"DELETE FROM T WHERE Nr Between 10 And 14"_s, dao::dbFailOnError);
    workspace.BeginTrans();
    database.Execute(u"INSERT INTO U (Name, Pos) SELECT Name, Pos FROM T WHERE Nr<20"_s, dao::dbFailOnError);
    workspace.CommitTrans();
    workspace.CommitTrans();
    database.Execute(u"UPDATE T SET Name='letzter' WHERE Nr=1"_s, dao::dbFailOnError);
    workspace.CommitTrans();
}

void appendBlocks(dao::Workspace& workspace, dao::Database& database) {
    workspace.BeginTrans();
    dao::RowWriter writer = database.appendRows(u"T"_s, {u"Nr"_s, u"Name"_s, u"Pos"_s});
    for (Long block = 0; block < 4; ++block) {
        std::vector<Variant> values;
        for (Long i = 0; i < 8; ++i) {
            const Long nr = 1000 + block * 8 + i;
            values.insert(values.end(), {Variant(nr), Variant(u"neu %1"_s.arg(nr)), Variant(i)});
        }
        writer.appendBlock(values);
    }
    workspace.CommitTrans();
}

void appendSingly(dao::Workspace&, dao::Database& database) {
    dao::RowWriter writer = database.appendRows(u"U"_s, {u"Name"_s});
    const Variant name[] = {Variant(u"einzeln"_s)};
    writer.append(name);
}

Ref<dao::Recordset> dynaset(dao::Database& database, const QString& source) {
    return database.OpenRecordset(source, dao::dbOpenDynaset);
}

/// Each row's edit is stored by itself.
Step editRow(Long row) {
    return [row](dao::Workspace&, dao::Database& database) {
        const auto rows = dynaset(database, u"SELECT * FROM T WHERE Nr<20 ORDER BY Nr"_s);
        rows->Move(row);
        rows->Edit();
        rows->setValue(u"Name", u"geändert "_s + QString(100, u'x'));
        rows->Update();
    };
}

void addRow(dao::Workspace&, dao::Database& database) {
    const auto rows = dynaset(database, u"U"_s);
    rows->AddNew();
    rows->setValue(u"Name", u"neu"_s);
    rows->Update();
}

void deleteRow(dao::Workspace&, dao::Database& database) {
    const auto rows = dynaset(database, u"SELECT * FROM T ORDER BY Nr DESC"_s);
    rows->Delete();
}

/// The same for the row of a key in a table.
Step editSought(Long key) {
    return [key](dao::Workspace&, dao::Database& database) {
        const auto rows = database.OpenRecordset(u"T"_s, dao::dbOpenTable);
        rows->setIndex(u"PrimaryKey"_s);
        rows->Seek(u"=", key);
        rows->Edit();
        rows->setValue(u"Name", u"geändert "_s + QString(100, u'x'));
        rows->Update();
    };
}

// A walk that rewrites the column by which it is ordered.
void renumber(dao::Workspace& workspace, dao::Database& database) {
    workspace.BeginTrans();
    Long position = 100;
    for (const auto rows = dynaset(database, u"SELECT * FROM T ORDER BY Pos"_s); !rows->Eof(); rows->MoveNext()) {
        rows->Edit();
        rows->setValue(u"Pos", position--);
        rows->Update();
    }
    addRow(workspace, database);
    deleteRow(workspace, database);
    workspace.CommitTrans();
}

std::vector<StepCase> cases() {
    return {
        {"update", twoTables(40), {execute(u"UPDATE T SET Pos=Pos+3, Name=Name & 'x'"_s)}},
        {"delete", twoTables(40), {execute(u"DELETE FROM T WHERE Nr Mod 2=0"_s), execute(u"DELETE * FROM T"_s)}},
        {"insert select",
         twoTables(30),
         {execute(u"INSERT INTO U (Name, Pos) SELECT Name, Pos FROM T ORDER BY Name"_s)}},
        {"statements of their own",
         twoTables(30),
         {execute(u"INSERT INTO U (Name) VALUES ('a')"_s), execute(u"UPDATE T SET Pos=0 WHERE Nr<9"_s),
          execute(u"DELETE FROM T WHERE Nr=4"_s)}},
        {"statements of one transaction",
         twoTables(30),
         {together({u"DELETE FROM T WHERE Nr Between 5 And 15"_s, u"UPDATE T SET Pos=Pos-11 WHERE Nr>15"_s,
                    u"INSERT INTO U (Name, Pos) SELECT Name, Pos FROM T"_s}),
          together({u"UPDATE U SET Pos=1"_s})}},
        {"nested transactions", twoTables(30), {nest}},
        {"dynaset, row by row", twoTables(12), {editRow(0), addRow, editRow(3), deleteRow}},
        {"table, row by row", twoTables(12), {editSought(3), editSought(7)}},
        {"dynaset in a transaction", twoTables(16), {renumber}},
        {"bulk rows", twoTables(10), {appendBlocks, appendSingly, appendSingly}},
    };
}

} // namespace

TEST(Faults, EveryPointLeavesTheFileBeforeOrAfterAStep) {
    qint64 filePoints = 0, statementPoints = 0;
    for (const StepCase& stepCase : cases())
        for (const JournalMode mode : journalModes) {
            StepRun run(stepCase, mode);
            int number = 0;
            for (const FileFault fault : fileFaults)
                filePoints += run.fileFaults(fault, rangeFor(number++));
            for (const dao::StatementFault fault : statementFaults)
                statementPoints += run.statementFaults(fault, rangeFor(number++));
        }
    std::cout << "Points: " << filePoints << " of files, " << statementPoints << " of statements\n";
    EXPECT_GE(filePoints + statementPoints, 1000);
}
