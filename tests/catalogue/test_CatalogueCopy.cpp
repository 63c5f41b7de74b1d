#include "CollectedRows.h"
#include "TestCatalogue.h"
#include "catalogue/CatalogueCopy.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/DatabaseSource.h"
#include "catalogue/DemoCatalogue.h"
#include "support/Printing.h"

#include <QFile>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

struct Opened {
    Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    Ref<dao::Database> database;

    explicit Opened(const QString& file, const dao::OpenOptions& options = {})
        : database(openCatalogue(*workspace, file, options)) {}
};

CollectedRows rowsOf(const QString& file) {
    Opened opened(file, {.readOnly = true});
    CollectedRows rows;
    DatabaseSource(*opened.workspace, *opened.database).readInto(rows);
    return rows;
}

class CatalogueCopy : public testing::Test {
protected:
    QString path(const QString& name) const { return folder.filePath(name); }
    ImportReport copy(const QString& source, const QString& target, const ImportOptions& options = {}) const {
        Opened opened(source);
        return copyCatalogue(*opened.workspace, *opened.database, target, options);
    }
    QString demo(Long articles, Long categories) const {
        DemoCatalogue made;
        made.articles = articles;
        made.categories = categories;
        made.create(path(u"demo.sqlite"_s));
        return path(u"demo.sqlite"_s);
    }
    void expectSameRows(const QString& a, const QString& b) const {
        const CollectedRows rows = rowsOf(a), others = rowsOf(b);
        for (const CatalogueTable& table : catalogueTables())
            EXPECT_EQ(rows.sorted(table.name), others.sorted(table.name)) << table.name.toStdString();
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(CatalogueCopy, everyRowWithItsKeys) {
    const QString source = demo(300, 50);
    const ImportReport report = copy(source, path(u"copy.sqlite"_s));
    ASSERT_EQ(report.rows.size(), catalogueTables().size());
    EXPECT_EQ(report.rows[1].table, u"ARTIKEL"_s);
    EXPECT_EQ(report.rows[1].rows, 300);
    expectSameRows(source, path(u"copy.sqlite"_s));
}

TEST_F(CatalogueCopy, valuesOfEveryKindToTheLastDigit) {
    const TestCatalogue source(
        u"INSERT INTO ARTIKEL VALUES (-2147483648, 'a''b\nß', '', NULL, NULL, '1850-02-03 04:05:06');"
        "INSERT INTO ARTIKEL VALUES (2147483647, NULL, 'x ', -1, 7, NULL);"
        "INSERT INTO \"ARTIKEL/PREISE\" VALUES (1, 1, 0.1, 1.2345), (1, 1, 1e300, NULL), (NULL, NULL, NULL, -9.99);"
        "INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", \"Parent\", \"ID\") VALUES (13, 99, 5);"_s);
    copy(source.path(), path(u"copy.sqlite"_s));
    expectSameRows(source.path(), path(u"copy.sqlite"_s));
}

TEST_F(CatalogueCopy, anEmptyCatalogueTakesItAndAFullOneStaysAsItIs) {
    const QString source = demo(20, 5), target = path(u"target.sqlite"_s);
    createCatalogue(target);
    copy(source, target);
    expectSameRows(source, target);
    TestCatalogue full;
    full.addArticle(4711);
    EXPECT_EQ(errorOf([&] { copy(source, full.path()); }), 3204);
    EXPECT_EQ(rowsOf(full.path()).tables[u"ARTIKEL"_s].rows.size(), 1);
}

TEST_F(CatalogueCopy, theCopyCountsOnBehindTheHighestKey) {
    TestCatalogue source;
    source.addCategory(13, "NULL", 1);
    source.addArticle(1);
    source.assign(500, 1, 13, 1);
    copy(source.path(), path(u"copy.sqlite"_s));
    const Opened target(path(u"copy.sqlite"_s));
    target.database->Execute(u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel]) VALUES (2, 13)"_s);
    const auto rows = target.database->OpenRecordset(u"SELECT Max([ArtKatID]) FROM ARTKAT"_s, dao::dbOpenSnapshot);
    EXPECT_EQ(rows->value(0), Variant(501));
}

TEST_F(CatalogueCopy, theTargetKeepsItsOwnDigit) {
    const TestCatalogue source, target;
    setReplicaDigit(source.database(), 3);
    setReplicaDigit(target.database(), 5);
    copy(source.path(), path(u"new.sqlite"_s));
    copy(source.path(), target.path());
    EXPECT_EQ(replicaDigit(*Opened(path(u"new.sqlite"_s)).database), 0);
    EXPECT_EQ(replicaDigit(target.database()), 5);
}

TEST_F(CatalogueCopy, cancelledInTheMiddleItLeavesNothing) {
    const QString source = demo(5000, 50), target = path(u"target.sqlite"_s);
    ImportOptions options;
    options.progress = [](const QString& table, qint64 rows, qint64 expected) {
        EXPECT_EQ(expected, table == u"ARTIKEL" ? 5000 : 2); // two senders before
        return table != u"ARTIKEL" || rows == 0;
    };
    EXPECT_EQ(errorOf([&] { copy(source, target, options); }), 3059);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"demo.sqlite"_s});
    createCatalogue(target);
    EXPECT_EQ(errorOf([&] { copy(source, target, options); }), 3059);
    EXPECT_EQ(rowsOf(target).tables[u"ARTIKEL"_s].rows.size(), 0);
}

TEST_F(CatalogueCopy, nobodyWritesIntoTheSourceMeanwhile) {
    const QString source = demo(3000, 20);
    Long refused = 0;
    ImportOptions options;
    options.progress = [&](const QString&, qint64, qint64) {
        const Opened other(source, {.busyTimeoutMilliseconds = 0});
        refused = errorOf([&] { other.database->Execute(u"DELETE FROM ARTKAT"_s, dao::dbFailOnError); });
        return true;
    };
    copy(source, path(u"copy.sqlite"_s), options);
    EXPECT_EQ(refused, 3260);
    expectSameRows(source, path(u"copy.sqlite"_s));
}

TEST_F(CatalogueCopy, aReadOnlySourceIsEnough) {
    const QString source = demo(30, 5);
    Opened opened(source, {.readOnly = true});
    copyCatalogue(*opened.workspace, *opened.database, path(u"copy.sqlite"_s));
    expectSameRows(source, path(u"copy.sqlite"_s));
}

TEST_F(CatalogueCopy, whatACatalogueDoesNotKnowIsNamed) {
    const TestCatalogue source(u"CREATE TABLE Notizen (a INTEGER); ALTER TABLE ARTIKEL ADD COLUMN Farbe TEXT;"_s);
    const ImportReport report = copy(source.path(), path(u"copy.sqlite"_s));
    EXPECT_EQ(report.passedOverTables, QStringList{u"Notizen"_s});
    EXPECT_EQ(report.passedOverColumns, QStringList{u"ARTIKEL.[Farbe]"_s});
}
