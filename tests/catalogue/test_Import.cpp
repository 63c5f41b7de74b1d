#include "CollectedRows.h"
#include "Facts.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueImport.h"
#include "catalogue/CatalogueSchema.h"
#include "support/Printing.h"

#include <QDir>
#include <QProcess>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class Import : public testing::Test {
protected:
    QString target(const QString& name = u"katalog.mkl"_s) const { return folder_.filePath(name); }
    QStringList files() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    QTemporaryDir folder_;
};

Ref<dao::Database> open(const QString& file) {
    static const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    return openCatalogue(*workspace, file);
}

QStringList rowTexts(const QString& file) {
    QStringList texts;
    const auto database = open(file);
    for (const CatalogueTable& table : catalogueTables()) {
        const auto rows = database->OpenRecordset(table.name, dao::dbOpenSnapshot);
        for (; !rows->Eof(); rows->MoveNext()) {
            QString text = table.name;
            for (int i = 0; i < rows->FieldCount(); ++i) {
                const Variant value = rows->value(i);
                text += u'|' + (value.isNull() ? u"Null"_s : QString::number(int(value.type())) + value.toText());
            }
            texts.append(text);
        }
    }
    texts.sort();
    database->Close();
    return texts;
}

/// The larger files are no part of the project; they stand beside a checkout that has them.
QString sharedData(const QString& name) {
    return QStringLiteral(MKL_SOURCE_DIR "/../shared/data/") + name;
}

} // namespace

TEST_F(Import, databaseWithAllItsFacts) {
    const ImportReport report = importCatalogue(testData(u"catalogue-small.mdb"_s), target());
    EXPECT_EQ(files(), QStringList{u"katalog.mkl"_s});
    const auto database = open(target());
    expectSameFacts(factsOf(*database), readFacts(testData(u"facts-small.json"_s)));
    EXPECT_EQ(report.rows.size(), catalogueTables().size());
    EXPECT_TRUE(report.passedOverColumns.isEmpty() && report.passedOverTables.isEmpty());
}

TEST_F(Import, csvFolderWithAllItsFacts) {
    importCatalogue(testData(u"csv-small"_s), target());
    const auto database = open(target());
    expectSameFacts(factsOf(*database), readFacts(testData(u"facts-small.json"_s)));
}

TEST_F(Import, bothFormsGiveTheSameCatalogue) {
    importCatalogue(testData(u"catalogue-small.mdb"_s), target(u"a"_s));
    importCatalogue(testData(u"csv-small"_s), target(u"b"_s));
    EXPECT_EQ(rowTexts(target(u"a"_s)), rowTexts(target(u"b"_s)));
}

TEST_F(Import, anEmptyCatalogueIsFilledAndAFullOneRefused) {
    createCatalogue(target());
    importCatalogue(testData(u"csv-small"_s), target());
    const QStringList before = rowTexts(target());
    EXPECT_EQ(before.size(), 270);
    EXPECT_EQ(errorOf([&] { importCatalogue(testData(u"csv-small"_s), target()); }), 3204);
    EXPECT_EQ(rowTexts(target()), before);
}

TEST_F(Import, aFileThatIsNoCatalogueStaysAsItIs) {
    QFile file(target());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Guten Tag");
    file.close();
    EXPECT_NE(errorOf([&] { importCatalogue(testData(u"csv-small"_s), target()); }), 0);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "Guten Tag");
}

TEST_F(Import, theCounterGoesOnBehindTheHighestKey) {
    importCatalogue(testData(u"catalogue-small.mdb"_s), target());
    const auto database = open(target());
    database->Execute(u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) VALUES (1, 13, 9)"_s,
                      dao::dbFailOnError);
    EXPECT_EQ(database->OpenRecordset(u"SELECT Max([ArtKatID]) FROM ARTKAT"_s, dao::dbOpenSnapshot)->value(0),
              Variant(48));
}

TEST_F(Import, rowsAreTakenAsTheyAre) {
    const CsvFolder folder;
    folder.write(u"ARTIKEL/KATEGORIEN"_s,
                 "\"Kategorie-Schlüssel\",\"Absender-Schlüssel\",\"Kategoriename\",\"Bezeichnung\",\"LetzteÄnderung\","
                 "\"Parent\",\"Order\",\"Aktiv\"\n"
                 "13,3,,\"\",0100-01-01 00:00:00,23,1,-1\n23,,\"x\",,9999-12-31 23:59:59,13,1,\n"
                 "-2147483648,3,\"y\",,1899-12-29 18:00:00,2147483647,-5,0\n");
    importCatalogue(folder.path(), target());
    const auto rows = open(target())->OpenRecordset(
        u"SELECT * FROM [ARTIKEL/KATEGORIEN] ORDER BY [Kategorie-Schlüssel]"_s, dao::dbOpenSnapshot);
    EXPECT_EQ(rows->value(u"Kategorie-Schlüssel"), Variant(std::numeric_limits<Long>::min()));
    EXPECT_EQ(rows->value(u"LetzteÄnderung"), Variant::date(-1.75));
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Kategoriename"), Variant());
    EXPECT_EQ(rows->value(u"Bezeichnung"), Variant(u""_s));
    EXPECT_EQ(rows->value(u"LetzteÄnderung"), Variant::date(-657434.0));
    rows->MoveNext();
    EXPECT_EQ(rows->value(u"Aktiv"), Variant());
}

TEST_F(Import, aFailureLeavesNothingBehind) {
    const CsvFolder folder;
    folder.write(u"ARTIKEL/PREISE"_s, folder.read(u"ARTIKEL/PREISE"_s).chopped(1));
    EXPECT_EQ(errorOf([&] { importCatalogue(folder.path(), target()); }), 3049);
    EXPECT_EQ(files(), QStringList());
    createCatalogue(target());
    EXPECT_EQ(errorOf([&] { importCatalogue(folder.path(), target()); }), 3049);
    EXPECT_EQ(rowTexts(target()), QStringList());
    EXPECT_EQ(files(), QStringList{u"katalog.mkl"_s});
}

TEST_F(Import, doubledAndMissingKeysAreDamage) {
    const CsvFolder folder;
    folder.write(u"ABSENDER"_s, "\"Absender-Schlüssel\"\n3\n7\n3\n");
    EXPECT_EQ(errorOf([&] { importCatalogue(folder.path(), target()); }), 3022);
    folder.write(u"ABSENDER"_s, "\"Absender-Schlüssel\"\n3\n\n");
    EXPECT_EQ(errorOf([&] { importCatalogue(folder.path(), target()); }), 3058);
    EXPECT_EQ(files(), QStringList());
}

TEST_F(Import, tablesWithoutRowsAreFine) {
    const CsvFolder folder;
    for (const CatalogueTable& table : catalogueTables())
        folder.write(table.name, folder.read(table.name).split('\n').first() + '\n');
    importCatalogue(folder.path(), target());
    EXPECT_EQ(rowTexts(target()), QStringList());
}

TEST_F(Import, cancelledByTheProgress) {
    ImportOptions options;
    int calls = 0;
    options.progress = [&](const QString&, qint64, qint64) { return ++calls < 3; };
    for (const QString& source : {testData(u"catalogue-small.mdb"_s), testData(u"csv-small"_s)}) {
        calls = 0;
        EXPECT_EQ(errorOf([&] { importCatalogue(source, target(), options); }), 3059);
        EXPECT_EQ(files(), QStringList());
    }
}

TEST_F(Import, noSuchSource) {
    EXPECT_EQ(errorOf([&] { importCatalogue(target(u"fehlt.mdb"_s), target()); }), 3024);
    EXPECT_EQ(errorOf([&] { importCatalogue(testData(u"README.md"_s), target()); }), 3343);
    EXPECT_EQ(files(), QStringList());
}

TEST_F(Import, otherPeoplesTablesAndColumnsAreNamed) {
    const QString source = sharedData(u"more/catalogue-medium.accdb"_s);
    if (!QFile::exists(source)) GTEST_SKIP() << "the larger catalogues do not stand beside this checkout";
    importCatalogue(source, target(u"a"_s));
    importCatalogue(sharedData(u"more/catalogue-medium.mdb"_s), target(u"b"_s));
    EXPECT_EQ(rowTexts(target(u"a"_s)), rowTexts(target(u"b"_s)));
}

TEST_F(Import, theRealCatalogueWithAllItsFacts) {
    const QString source = sharedData(u"catalogue-real.mdb"_s);
    if (!QFile::exists(source)) GTEST_SKIP() << "the larger catalogues do not stand beside this checkout";
    importCatalogue(source, target());
    const auto database = open(target());
    expectSameFacts(factsOf(*database), readFacts(sharedData(u"facts-real.json"_s)));
}

TEST_F(Import, theRealCatalogueFromItsCsv) {
    const QDir packed(sharedData(u"csv-real"_s));
    if (!packed.exists()) GTEST_SKIP() << "the larger catalogues do not stand beside this checkout";
    const QDir unpacked(folder_.path());
    for (const QString& name : packed.entryList({u"*.gz"_s})) {
        QProcess gzip;
        gzip.setStandardOutputFile(unpacked.filePath(name.chopped(3)));
        gzip.start(u"gzip"_s, {u"-dc"_s, packed.filePath(name)});
        ASSERT_TRUE(gzip.waitForFinished() && gzip.exitCode() == 0) << name.toStdString();
    }
    importCatalogue(unpacked.path(), target(u"a"_s));
    importCatalogue(sharedData(u"catalogue-real.mdb"_s), target(u"b"_s));
    EXPECT_EQ(rowTexts(target(u"a"_s)), rowTexts(target(u"b"_s)));
}
