// What the data layer lays down in a database on a server, over an older version, by several at once, and who may do
// what then.
#include "dao/OpenedDatabase.h"
#include "dao/postgres/ServerRole.h"

#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace dao {

namespace {

QByteArray version(const QString& url) {
    return mkl::runOnServer(url, "SELECT obj_description('mkl'::regnamespace, 'pg_namespace')");
}

/// A database that nobody has opened yet, gone with the object.
class FreshDatabase {
public:
    FreshDatabase() {
        drop();
        mkl::runOnServer(admin(), "CREATE DATABASE fresh");
    }
    ~FreshDatabase() { drop(); }
    Q_DISABLE_COPY_MOVE(FreshDatabase)
    QString url() const { return mkl::PostgresServer::instance().urlOf("fresh"); }

private:
    static QString admin() { return mkl::PostgresServer::instance().urlOf("postgres"); }
    static void drop() { mkl::runOnServer(admin(), "DROP DATABASE IF EXISTS fresh WITH (FORCE)"); }
};

int openInAnotherProcess(const QString& url) {
    const pid_t child = fork();
    if (child != 0) return child;
    int failed = 1;
    try {
        DBEngine::CreateWorkspace()->OpenDatabase(url);
        failed = 0;
    } catch (const std::exception&) {
    }
    _exit(failed);
}

} // namespace

TEST(PostgresInstall, ComesOverAnOlderVersionAndKeepsTypesAndTables) {
    const TempDatabase file(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Ja YESNO, Name TEXT); INSERT INTO T VALUES (1, -1, 'ä')");
    const QByteArray current = version(file.path());
    mkl::runOnServer(file.path(), "CREATE INDEX names ON \"T\" (mkl_key(\"Name\")); UPDATE mkl.local SET number = 7; "
                                  "DROP FUNCTION mkl.mkl_right(integer, bigint); "
                                  "CREATE OR REPLACE FUNCTION mkl.mkl_left(text, bigint) RETURNS text LANGUAGE sql AS "
                                  "$$ SELECT 'alt'::text $$; COMMENT ON SCHEMA mkl IS '1'");
    const auto workspace = DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file.path());
    EXPECT_EQ(version(file.path()), current);
    EXPECT_EQ(database->LocalNumber(), 7);
    const auto one = [&](const QString& sql) { return database->OpenRecordset(sql, dbOpenSnapshot)->value(0); };
    EXPECT_EQ(one(u"SELECT Left('abc', 2) FROM T"_s), Variant(u"ab"_s));
    EXPECT_EQ(one(u"SELECT Right(Nr, 1) FROM T"_s), Variant(u"1"_s));
    EXPECT_EQ(one(u"SELECT Ja FROM T WHERE Name = 'Ä'"_s), Variant(true));
}

TEST(PostgresInstall, LeavesALaterVersionAlone) {
    const TempDatabase file("CREATE TABLE T (Nr INTEGER PRIMARY KEY)");
    const QByteArray current = version(file.path());
    mkl::runOnServer(file.path(), "COMMENT ON SCHEMA mkl IS '1000'");
    DBEngine::CreateWorkspace()->OpenDatabase(file.path());
    EXPECT_EQ(version(file.path()), "1000");
    mkl::runOnServer(file.path(), "COMMENT ON SCHEMA mkl IS '" + current + '\'');
}

TEST(PostgresInstall, SeveralProgramsOpenANewDatabaseAtOnce) {
    const FreshDatabase fresh;
    std::vector<int> children(4);
    for (int& child : children)
        child = openInAnotherProcess(fresh.url());
    for (const int child : children) {
        int status = 1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(mkl::runOnServer(fresh.url(), "SELECT count(*) FROM mkl.local"), "1");
}

TEST(PostgresInstall, WhoMayMakeNothingNeedsAPreparedDatabase) {
    const FreshDatabase fresh;
    const ServerRole reader(fresh.url(), "mkl_reader", "");
    try {
        DBEngine::CreateWorkspace()->OpenDatabase(reader.url());
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_EQ(error.number(), 3112);
        EXPECT_TRUE(error.description().contains(u"Eigentümer"_s));
    }
    DBEngine::CreateWorkspace()->OpenDatabase(fresh.url());
    EXPECT_NO_THROW(DBEngine::CreateWorkspace()->OpenDatabase(reader.url()));
}

TEST(PostgresInstall, AReaderReadsAllAndChangesNothing) {
    const TempDatabase file(
        "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT); INSERT INTO T VALUES (1, 'Äpfel'), (2, 'Ωmega')");
    const ServerRole reader(
        file.path(), "mkl_reader",
        "GRANT USAGE ON SCHEMA public TO ROLE; GRANT SELECT ON ALL TABLES IN SCHEMA public TO ROLE");
    const auto workspace = DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(reader.url());
    const auto one = [&](const QString& sql) { return database->OpenRecordset(sql, dbOpenSnapshot)->value(0); };
    EXPECT_EQ(one(u"SELECT Nr FROM T WHERE Name Like 'ä*'"_s), Variant(1));
    EXPECT_EQ(one(u"SELECT Nr FROM T WHERE Name = 'ωMEGA'"_s), Variant(2));
    EXPECT_EQ(one(u"SELECT Format(Nr, '000') FROM T WHERE Nr = 1"_s), Variant(u"001"_s));
    EXPECT_EQ(database->LocalNumber(), 0);
    EXPECT_EQ(errorOf([&] { database->Execute(u"DELETE FROM T"_s, dbFailOnError); }), 3112);
    EXPECT_EQ(errorOf([&] { database->Execute(u"UPDATE T SET Name = Format(Nr, '000')"_s, dbFailOnError); }), 3112);
    EXPECT_EQ(errorOf([&] { database->setLocalNumber(1); }), 3112);
    workspace->BeginTrans();
    const auto rows = database->OpenRecordset(u"T"_s, dbOpenTable);
    rows->Edit();
    rows->setValue(u"Name", u"neu"_s);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3112);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3112);
    workspace->CommitTrans();
    EXPECT_EQ(file.one("SELECT count(*) FROM T WHERE Name = 'neu'"), "0");
}

} // namespace dao
