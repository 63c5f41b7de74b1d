// What scripts/server-roles.sql lets each role do.
#include "EmptyDatabase.h"
#include "Tool.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueTables.h"
#include "support/Printing.h"

#include <QFile>
#include <stdexcept>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// A catalogue that mkl_owner has made, as the page for administrators tells.
class ServerRoles : public testing::Test {
protected:
    ServerRoles() {
        runScript();
        EXPECT_EQ(tool.run({u"new"_s, database.urlFor(u"mkl_owner"_s)}).status, 0);
        runScript();
        runScript();
    }

    void runScript() const {
        QFile script(QStringLiteral(MKL_SOURCE_DIR "/scripts/server-roles.sql"));
        ASSERT_TRUE(script.open(QIODevice::ReadOnly));
        database.native(script.readAll());
    }
    static Ref<dao::Database> open(const QString& address) {
        return openCatalogue(*dao::DBEngine::CreateWorkspace(), address);
    }
    Ref<dao::Database> openedBy(const QString& role) const { return open(database.urlFor(role)); }
    template<class Action>
    static bool fails(Action&& action) {
        try {
            action();
        } catch (const std::exception&) {
            return true;
        }
        return false;
    }
    bool mayNot(const QString& role, const QByteArray& native) const {
        return fails([&] { runOnServer(database.urlFor(role), native); });
    }

    const EmptyDatabase database;
    Tool tool;
};

const QStringList statements = {
    u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Kategoriename], [Order]) VALUES (10, 'Neu', 1)"_s,
    u"INSERT INTO ARTIKEL ([Artikel-Schlüssel], [Artikelname]) VALUES (10, 'Öse')"_s,
    u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) VALUES (10, 10, 1)"_s,
    u"UPDATE ARTKAT SET [Order] = 2 WHERE [Artikel-Schlüssel] = 10"_s,
    u"UPDATE [ARTIKEL/KATEGORIEN] SET [Kategoriename] = 'Alt' WHERE [Kategoriename] Like 'ne*'"_s};

} // namespace

TEST_F(ServerRoles, theClerkWorks) {
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> clerk = openCatalogue(*workspace, database.urlFor(u"mkl_clerk"_s));
    EXPECT_EQ(replicaDigit(*clerk), 0);
    workspace->BeginTrans();
    for (const QString& statement : statements) {
        clerk->Execute(statement, dao::dbFailOnError);
        EXPECT_EQ(clerk->RecordsAffected(), 1) << statement.toStdString();
    }
    const auto rows = clerk->OpenRecordset(u"ARTKAT"_s, dao::dbOpenDynaset);
    rows->AddNew();
    rows->setValue(u"Artikel-Schlüssel"_s, 10);
    rows->setValue(u"Kategorie-Schlüssel"_s, 10);
    rows->Update();
    rows->Close();
    workspace->CommitTrans();
    // The category takes its assignments along.
    clerk->Execute(u"DELETE FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel] = 10"_s, dao::dbFailOnError);
    EXPECT_EQ(database.native("SELECT count(*) FROM \"ARTKAT\""), "0");
    EXPECT_EQ(tool.run({u"repair"_s, database.urlFor(u"mkl_clerk"_s)}).status, 0);
    EXPECT_TRUE(fails([&] { setReplicaDigit(*clerk, 3); }));
}

TEST_F(ServerRoles, theClerkFillsAnEmptyCatalogue) {
    EXPECT_EQ(tool.run({u"demo"_s, u"a.sqlite"_s, u"--articles=20"_s}).status, 0);
    const ToolResult result = tool.run({u"copy"_s, u"a.sqlite"_s, database.urlFor(u"mkl_clerk"_s)});
    EXPECT_EQ(result.status, 0) << result.errors.toStdString();
}

TEST_F(ServerRoles, theReaderSeesEverythingAndWritesNothing) {
    const Ref<dao::Database> clerk = openedBy(u"mkl_clerk"_s), reader = openedBy(u"mkl_reader"_s);
    for (const QString& statement : statements)
        clerk->Execute(statement, dao::dbFailOnError);
    for (const CatalogueTable& table : catalogueTables())
        EXPECT_FALSE(fails([&] { reader->OpenRecordset(table.name, dao::dbOpenTable); })) << table.name.toStdString();
    const auto found = reader->OpenRecordset(
        u"SELECT [Artikelname] FROM ARTIKEL WHERE [Artikelname] Like 'ö*' ORDER BY [Artikelname]"_s,
        dao::dbOpenDynaset);
    EXPECT_EQ(found->value(0).toText(), u"Öse"_s);
    EXPECT_EQ(replicaDigit(*reader), 0);
    for (const QString& statement :
         {statements[0], statements[3], u"DELETE FROM ARTKAT"_s, u"INSERT INTO ARTKAT ([Order]) VALUES (1)"_s})
        EXPECT_TRUE(fails([&] { reader->Execute(statement, dao::dbFailOnError); })) << statement.toStdString();
    for (const QString& command : {u"check"_s, u"info"_s, u"tree"_s})
        EXPECT_EQ(tool.run({command, database.urlFor(u"mkl_reader"_s)}).status, 0) << command.toStdString();
    EXPECT_EQ(tool.run({u"copy"_s, database.urlFor(u"mkl_reader"_s), u"a.sqlite"_s}).status, 0);
    EXPECT_TRUE(tool.run({u"info"_s, database.urlFor(u"mkl_reader"_s)}).output.contains(u"(schreibgeschützt)"));
    EXPECT_FALSE(tool.run({u"info"_s, database.urlFor(u"mkl_clerk"_s)}).output.contains(u"(schreibgeschützt)"));
    EXPECT_TRUE(tool.run({u"repair"_s, database.urlFor(u"mkl_reader"_s)}).errors.contains(u"schreibgeschützt"));
    EXPECT_EQ(tool.run({u"repair"_s, database.urlFor(u"mkl_reader"_s), u"--dry-run"_s}).status, 0);
    EXPECT_EQ(database.native("SELECT count(*) FROM \"ARTKAT\""), "1");
}

TEST_F(ServerRoles, onlyTheOwnerMakesTables) {
    for (const QString& role : {u"mkl_clerk"_s, u"mkl_reader"_s, u"mkl_replication"_s}) {
        EXPECT_TRUE(mayNot(role, "CREATE TABLE public.x (n integer)")) << role.toStdString();
        EXPECT_TRUE(mayNot(role, "CREATE TABLE mkl.x (n integer)")) << role.toStdString();
        EXPECT_TRUE(mayNot(role, "CREATE SCHEMA x")) << role.toStdString();
        EXPECT_TRUE(mayNot(role, "CREATE TEMPORARY TABLE x (n integer)")) << role.toStdString();
        EXPECT_TRUE(mayNot(role, "UPDATE mkl.local SET number = 3")) << role.toStdString();
        EXPECT_TRUE(mayNot(role, "DROP TABLE public.\"ARTKAT\"")) << role.toStdString();
        EXPECT_FALSE(mayNot(role, "SELECT count(*) FROM public.\"ARTKAT\"")) << role.toStdString();
    }
    const QString owner = database.urlFor(u"mkl_owner"_s);
    EXPECT_EQ(tool.run({u"replica"_s, u"digit"_s, owner, u"3"_s}).output, u"Replik-Ziffer: 3\n"_s);
    EXPECT_FALSE(mayNot(u"mkl_owner"_s, "CREATE TABLE public.x (n integer); DROP TABLE public.x"));
}

TEST_F(ServerRoles, anotherSiteMayFetch) {
    EXPECT_EQ(database.native("SELECT rolreplication FROM pg_roles WHERE rolname = 'mkl_replication'"), "t");
    EXPECT_TRUE(mayNot(u"mkl_replication"_s, "DELETE FROM public.\"ARTKAT\""));
}

TEST_F(ServerRoles, aNewerProgramWaitsForTheOwner) {
    database.native("COMMENT ON SCHEMA mkl IS '1'"); // as an older program left it
    const ToolResult early = tool.run({u"check"_s, database.urlFor(u"mkl_clerk"_s)});
    EXPECT_EQ(early.status, 1);
    EXPECT_TRUE(early.errors.contains(u"Ihr Eigentümer muss sie einmal öffnen")) << early.errors.toStdString();
    EXPECT_EQ(tool.run({u"check"_s, database.urlFor(u"mkl_owner"_s)}).status, 0);
    EXPECT_EQ(tool.run({u"check"_s, database.urlFor(u"mkl_clerk"_s)}).status, 0);
}
