// A catalogue in a database of a server.
#include "catalogue/CatalogueCheck.h"
#include "catalogue/CatalogueCopy.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueInfo.h"
#include "catalogue/CatalogueSchema.h"
#include "catalogue/DemoCatalogue.h"
#include "support/PreparedDatabases.h"
#include "support/Printing.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class ServerCatalogue : public testing::Test {
protected:
    ~ServerCatalogue() override {
        workspace = {};
        PostgresServer::instance().returnDatabase(url);
    }

    Ref<dao::Database> opened() const { return workspace->OpenDatabase(url); }
    static void fill(const QString& target) {
        DemoCatalogue demo;
        demo.articles = 40;
        demo.categories = 12;
        demo.create(target);
    }

    template<class Action>
    static RunTimeError errorOf(Action&& action) {
        try {
            action();
        } catch (const RunTimeError& error) {
            return error;
        }
        return {0, u"no error"_s};
    }

    const QString url = PostgresServer::instance().takeDatabase();
    Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
};

Variant one(dao::Database& database, const QString& query) {
    return database.OpenRecordset(query, dao::dbOpenSnapshot)->value(0);
}

} // namespace

TEST_F(ServerCatalogue, isMadeInADatabaseThatHasNone) {
    EXPECT_FALSE(catalogueExists(url));
    createCatalogue(url);
    EXPECT_TRUE(catalogueExists(url));
    EXPECT_TRUE(CatalogueSchema::isEmpty(*openCatalogue(*workspace, url)));
    EXPECT_EQ(errorOf([&] { createCatalogue(url); }).number(), 3204);
}

TEST_F(ServerCatalogue, aDraftThatIsNotPublishedLeavesNothing) {
    {
        CatalogueDraft draft(url);
        EXPECT_FALSE(draft.database().tableNames().isEmpty());
        EXPECT_TRUE(opened()->tableNames().isEmpty()) << "another program sees it";
    }
    EXPECT_TRUE(opened()->tableNames().isEmpty());
}

TEST_F(ServerCatalogue, holdsWhatAFileHeldAndGivesItBack) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"a.mkl"_s), back = folder.filePath(u"b.mkl"_s);
    fill(file);
    const Ref<dao::Database> source = openCatalogue(*workspace, file);
    copyCatalogue(*workspace, *source, url);
    const Ref<dao::Database> onServer = openCatalogue(*workspace, url);
    EXPECT_FALSE(CatalogueCheck::of(*onServer).isDamaged());
    copyCatalogue(*workspace, *onServer, back);
    const Ref<dao::Database> copy = openCatalogue(*workspace, back);
    for (const QString& table : source->tableNames()) {
        const QString all = u"SELECT * FROM [%1]"_s.arg(table);
        const auto expected = source->OpenRecordset(all, dao::dbOpenSnapshot);
        const auto given = copy->OpenRecordset(all, dao::dbOpenSnapshot);
        for (; !expected->Eof(); expected->MoveNext(), given->MoveNext()) {
            ASSERT_FALSE(given->Eof()) << table.toStdString();
            for (Long i = 0; i < expected->FieldCount(); ++i)
                ASSERT_EQ(given->value(i), expected->value(i)) << table.toStdString();
        }
        EXPECT_TRUE(given->Eof());
    }
}

TEST_F(ServerCatalogue, numbersGoOnBehindThoseThatCameWithRows) {
    fill(url);
    const Ref<dao::Database> database = openCatalogue(*workspace, url);
    const Long highest = one(*database, u"SELECT Max(ArtKatID) FROM ARTKAT"_s).toLong();
    const auto rows = database->OpenRecordset(u"ARTKAT"_s, dao::dbOpenTable);
    rows->AddNew();
    EXPECT_EQ(rows->value(u"ArtKatID").toLong(), highest + 1);
}

TEST_F(ServerCatalogue, assignmentsGoWithTheirCategory) {
    fill(url);
    const Ref<dao::Database> database = openCatalogue(*workspace, url);
    const QString assigned = u"SELECT Count(*) FROM ARTKAT WHERE [Kategorie-Schlüssel]=13"_s;
    ASSERT_GT(one(*database, assigned).toLong(), 0);
    database->Execute(u"DELETE FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=13"_s, dao::dbFailOnError);
    EXPECT_EQ(one(*database, assigned).toLong(), 0);
}

TEST_F(ServerCatalogue, aDatabaseWithoutOurTablesSaysWhichIsMissing) {
    const RunTimeError error = errorOf([&] { openCatalogue(*workspace, url); });
    EXPECT_EQ(error.number(), 3011);
    EXPECT_TRUE(error.description().contains(u"ABSENDER"_s)) << error.description().toStdString();
}

TEST_F(ServerCatalogue, aColumnOfAnotherTypeIsRefused) {
    createCatalogue(url);
    runOnServer(url, "ALTER TABLE \"ARTIKEL/KATEGORIEN\" ALTER COLUMN \"Order\" TYPE text");
    const RunTimeError error = errorOf([&] { openCatalogue(*workspace, url); });
    EXPECT_EQ(error.number(), 3421);
    EXPECT_TRUE(error.description().contains(u"[ARTIKEL/KATEGORIEN].[Order]"_s)) << error.description().toStdString();
}
