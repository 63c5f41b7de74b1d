#include "support/FaultFile.h"

#include "dao/Workspace.h"
#include "support/PostgresServer.h"
#include "support/ServerRows.h"

#include <QFile>
#include <gtest/gtest.h>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr auto pageSize = "PRAGMA page_size=512;";

QByteArray journal(JournalMode mode) {
    return QByteArray("PRAGMA journal_mode=") + (mode == JournalMode::WriteAhead ? "WAL;" : "DELETE;");
}

const QByteArray probe = "CREATE TABLE Probe (Nr INTEGER PRIMARY KEY); INSERT INTO Probe VALUES (1);";

} // namespace

bool isFullRun() {
    static const bool full = qEnvironmentVariableIsSet("MKL_FULL");
    return full;
}

PointRange rangeFor(qint64 fault, qint64 step) {
    return isFullRun() ? PointRange() : PointRange{1 + fault % step, step};
}

FaultFile::FaultFile(const QByteArray& tables, JournalMode mode)
    : file_(pageSize + journal(mode) + tables + probe) {
    keep();
}

FaultFile::FaultFile(const CopyOf& original, JournalMode mode) {
    file_.copy(original.file);
    // Pages change their size in no other journal mode.
    if (!testsOnServer()) file_.run(journal(JournalMode::Rollback) + pageSize + "VACUUM;" + journal(mode));
    file_.run(probe);
    keep();
}

void FaultFile::keep() {
    if (testsOnServer()) return ServerRows(path()).keep();
    before_ = file_.bytes();
    FaultVfs::installAsDefault(); // for the sake of speed: nothing here waits for the disk
}

void FaultFile::restore() const {
    if (testsOnServer()) return ServerRows(path()).restore();
    for (const QString& suffix : {u"-journal"_s, u"-wal"_s, u"-shm"_s})
        QFile::remove(path() + suffix);
    file_.overwrite(before_);
}

QByteArray FaultFile::content() const {
    if (testsOnServer()) return ServerRows(path()).content();
    QByteArray content;
    const QByteArray names = file_.one("SELECT group_concat(name, '|') FROM (SELECT name FROM sqlite_master "
                                       "WHERE type='table' AND name NOT LIKE 'sqlite%' ORDER BY name)");
    for (const QByteArray& table : names.split('|')) {
        const QByteArray columns = file_.one("SELECT group_concat('quote(\"' || name || '\")', '||'',''||') "
                                             "FROM pragma_table_info('" +
                                             table + "')");
        content += table + ": " +
                   file_.one("SELECT group_concat(r, ' ') FROM (SELECT " + columns + " AS r FROM \"" + table +
                             "\" ORDER BY rowid)") +
                   '\n';
    }
    return content;
}

void FaultFile::expectSound() const {
    EXPECT_EQ(testsOnServer() ? "ok" : file_.one("PRAGMA integrity_check"), "ok");
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(path(), {.busyTimeoutMilliseconds = 0});
    writeProbe(*database);
    EXPECT_EQ(file_.one("SELECT Nr FROM Probe"), "2");
}

void writeProbe(dao::Database& database) {
    database.Execute(u"UPDATE Probe SET Nr=2"_s, dao::dbFailOnError);
}

} // namespace mkl
