// Users of a server with few rights: what they lack is named, and whoever may only read is known to.
#include "dao/OpenedDatabase.h"
#include "dao/postgres/ServerRole.h"

#include <QFile>

namespace dao {

namespace {

struct Failure {
    Long number = 0;
    QString description;
};

template<class Action>
Failure failureOf(Action&& action) {
    try {
        action();
    } catch (const mkl::RunTimeError& error) {
        return {error.number(), error.description()};
    }
    return {};
}

QString lacking(const QString& right, const QString& table) {
    return u"Für diesen Vorgang haben Sie auf dem Server kein Recht: An der Tabelle '%2' fehlt Ihnen %1. Es wurde "
           u"nichts geändert."_s.arg(right, table);
}

const QString closed = u"Für die Tabellen dieser Datenbank haben Sie kein Recht: Am Schema 'public' fehlt Ihnen USAGE. "
                       "Ein Verwalter des Servers muss es Ihnen geben."_s;

/// A database with the tables T and U, opened by a role that may do what the test grants.
class PostgresRights : public testing::Test {
protected:
    void grant(const QByteArray& rights) {
        mkl::runOnServer(file.path(), "REVOKE ALL ON SCHEMA public FROM PUBLIC; " + rights);
    }
    Ref<Database> open() const { return workspace->OpenDatabase(role.url()); }
    void expectLacking(const Ref<Database>& database, const QString& sql, const QString& right,
                       const QString& table) const {
        const Failure failure = failureOf([&] {
            sql.startsWith(u"SELECT"_s) ? void(database->OpenRecordset(sql, dbOpenSnapshot))
                                        : database->Execute(sql, dbFailOnError);
        });
        EXPECT_EQ(failure.number, 3112) << sql.toStdString();
        EXPECT_EQ(failure.description, lacking(right, table)) << failure.description.toStdString();
    }

    const TempDatabase file{threeRows() + "CREATE TABLE U (Nr INTEGER PRIMARY KEY, Name TEXT);"};
    const ServerRole role{file.path(), "mkl_limited", ""};
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
};

constexpr const char* usage = "GRANT USAGE ON SCHEMA public TO mkl_limited;";

} // namespace

TEST_F(PostgresRights, WithoutTheSchemaNothingOpens) {
    grant("GRANT SELECT ON ALL TABLES IN SCHEMA public TO mkl_limited");
    const Failure failure = failureOf([&] { open(); });
    EXPECT_EQ(failure.number, 3112);
    EXPECT_EQ(failure.description, closed) << failure.description.toStdString();
    grant(usage);
    EXPECT_EQ(failureOf([&] { open(); }).number, 0);
}

TEST_F(PostgresRights, ASchemaThatIsClosedLaterIsNamed) {
    grant(QByteArray(usage) + "GRANT SELECT, DELETE ON \"T\" TO mkl_limited");
    const Ref<Database> database = open();
    const auto count = [&] { return database->OpenRecordset(u"SELECT Count(*) FROM T"_s, dbOpenSnapshot)->value(0); };
    EXPECT_EQ(count(), Variant(3));
    grant("REVOKE USAGE ON SCHEMA public FROM mkl_limited");
    EXPECT_EQ(failureOf(count).description, closed);
    const Failure action = failureOf([&] { database->Execute(u"DELETE FROM T"_s, dbFailOnError); });
    EXPECT_EQ(action.number, 3112);
    EXPECT_EQ(action.description, closed) << action.description.toStdString();
    grant(usage);
    EXPECT_EQ(count(), Variant(3));
}

TEST_F(PostgresRights, ATableThatMayNotBeReadIsNamed) {
    grant(QByteArray(usage) + "GRANT SELECT ON \"T\" TO mkl_limited; GRANT INSERT ON \"U\" TO mkl_limited");
    const Ref<Database> database = open();
    for (const QString& sql : {u"SELECT Name FROM U"_s, u"SELECT T.Nr FROM T INNER JOIN U ON T.Nr = U.Nr"_s,
                               u"SELECT Format(Nr, '000') FROM U"_s, u"INSERT INTO U (Nr) VALUES (1)"_s})
        expectLacking(database, sql, u"SELECT"_s, u"U"_s);
    EXPECT_EQ(failureOf([&] { database->OpenRecordset(u"U"_s, dbOpenTable)->value(0); }).description,
              lacking(u"SELECT"_s, u"U"_s));
    EXPECT_EQ(database->OpenRecordset(u"SELECT Count(*) FROM T"_s, dbOpenSnapshot)->value(0), Variant(3));
}

TEST_F(PostgresRights, ATableThatMayNotBeChangedIsNamed) {
    grant(QByteArray(usage) + "GRANT SELECT ON ALL TABLES IN SCHEMA public TO mkl_limited; "
                              "GRANT UPDATE ON \"U\" TO mkl_limited");
    const Ref<Database> database = open();
    expectLacking(database, u"INSERT INTO T SELECT * FROM U"_s, u"INSERT"_s, u"T"_s);
    expectLacking(database, u"INSERT INTO U SELECT * FROM T"_s, u"INSERT"_s, u"U"_s);
    expectLacking(database, u"UPDATE T SET Name = 'neu'"_s, u"UPDATE"_s, u"T"_s);
    expectLacking(database, u"UPDATE T SET Name = Format(Nr, '000')"_s, u"UPDATE"_s, u"T"_s);
    expectLacking(database, u"DELETE FROM U"_s, u"DELETE"_s, u"U"_s);
    const auto rows = database->OpenRecordset(u"SELECT * FROM T ORDER BY Nr"_s, dbOpenDynaset);
    rows->Edit();
    rows->setValue(u"Name", u"neu"_s);
    EXPECT_EQ(failureOf([&] { rows->Update(); }).description, lacking(u"UPDATE"_s, u"T"_s));
    EXPECT_EQ(failureOf([&] { rows->Delete(); }).description, lacking(u"DELETE"_s, u"T"_s));
    EXPECT_EQ(file.one("SELECT count(*) FROM T WHERE Name <> 'neu'"), "3");
}

TEST_F(PostgresRights, ARefusalLeavesTheTransactionUsable) {
    grant(QByteArray(usage) + "GRANT SELECT ON ALL TABLES IN SCHEMA public TO mkl_limited; "
                              "GRANT INSERT ON \"U\" TO mkl_limited");
    const Ref<Database> database = open();
    workspace->BeginTrans();
    expectLacking(database, u"DELETE FROM T"_s, u"DELETE"_s, u"T"_s);
    EXPECT_EQ(failureOf([&] { database->Execute(u"INSERT INTO U (Nr) VALUES (1)"_s, dbFailOnError); }).number, 0);
    expectLacking(database, u"DELETE FROM U"_s, u"DELETE"_s, u"U"_s);
    workspace->CommitTrans();
    EXPECT_EQ(file.one("SELECT count(*) FROM U"), "1");
}

TEST_F(PostgresRights, WhoMayOnlyReadHasADatabaseThatCannotBeChanged) {
    EXPECT_TRUE(workspace->OpenDatabase(file.path())->Updatable());
    grant(QByteArray(usage) + "GRANT SELECT ON ALL TABLES IN SCHEMA public TO mkl_limited");
    const Ref<Database> reading = open();
    EXPECT_FALSE(reading->Updatable());
    EXPECT_FALSE(reading->OpenRecordset(u"T"_s, dbOpenTable)->Updatable());
    // The server decides, and it may have changed its mind.
    expectLacking(reading, u"UPDATE U SET Name = 'x'"_s, u"UPDATE"_s, u"U"_s);
    grant("GRANT UPDATE (\"Name\") ON \"U\" TO mkl_limited");
    EXPECT_EQ(failureOf([&] { reading->Execute(u"UPDATE U SET Name = 'x'"_s, dbFailOnError); }).number, 0);
    EXPECT_TRUE(open()->Updatable());
}

TEST_F(PostgresRights, AnEmptyDatabaseCanBeChangedByWhoMayMakeTables) {
    file.run("DROP TABLE T; DROP TABLE U");
    grant(usage);
    EXPECT_FALSE(open()->Updatable());
    grant("GRANT CREATE ON SCHEMA public TO mkl_limited");
    EXPECT_TRUE(open()->Updatable());
}

TEST_F(PostgresRights, ADatabaseThatIsSetToReadingCannotBeChanged) {
    grant(QByteArray(usage) + "GRANT ALL ON ALL TABLES IN SCHEMA public TO mkl_limited; "
                              "ALTER ROLE mkl_limited SET default_transaction_read_only = on");
    const Ref<Database> database = open();
    EXPECT_FALSE(database->Updatable());
    EXPECT_EQ(failureOf([&] { database->Execute(u"DELETE FROM T"_s, dbFailOnError); }).number, 3027);
    workspace->BeginTrans();
    EXPECT_EQ(database->OpenRecordset(u"SELECT Count(*) FROM T"_s, dbOpenSnapshot)->value(0), Variant(3));
    workspace->CommitTrans();
}

TEST(PostgresSpare, IsReadAndNotWritten) {
    mkl::PostgresServer server;
    const QString url = server.urlOf("postgres");
    DBEngine::CreateWorkspace()->OpenDatabase(url)->executeNative(
        u"CREATE TABLE \"T\" (\"Nr\" integer PRIMARY KEY); INSERT INTO \"T\" VALUES (1), (2)"_s);
    QFile signal(QString::fromUtf8(mkl::runOnServer(url, "SHOW data_directory")) + u"/standby.signal"_s);
    server.stop();
    ASSERT_TRUE(signal.open(QIODevice::WriteOnly)); // from now on it follows another server
    server.start();
    const auto workspace = DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(url);
    EXPECT_EQ(mkl::runOnServer(url, "SELECT pg_is_in_recovery()"), "t");
    EXPECT_FALSE(database->Updatable());
    workspace->BeginTrans();
    EXPECT_EQ(database->OpenRecordset(u"SELECT Count(*) FROM T"_s, dbOpenDynaset)->value(0), Variant(2));
    EXPECT_EQ(database->OpenRecordset(u"SELECT Format(Nr, '00') FROM T WHERE Nr = 1"_s, dbOpenSnapshot)->value(0),
              Variant(u"01"_s));
    workspace->CommitTrans();
    EXPECT_EQ(failureOf([&] { database->Execute(u"DELETE FROM T"_s, dbFailOnError); }).number, 3027);
    EXPECT_FALSE(database->takeChangedByOthers());
}

} // namespace dao
