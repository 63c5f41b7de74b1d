// Damaged files: refused, or read to the end with other values, but never a crash, a hang or a lost row.
#include "CollectedRows.h"
#include "catalogue/CatalogueImport.h"
#include "catalogue/ReaderProcess.h"
#include "support/Printing.h"

#include <QDir>
#include <random>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 15000;
constexpr qsizetype pageSize = 4096;

QByteArray smallCatalogue() {
    QFile file(testData(u"catalogue-small.mdb"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class DamagedFiles : public testing::Test {
protected:
    QString path() const { return folder_.filePath(u"probe.mdb"_s); }
    QString target() const { return folder_.filePath(u"probe.sqlite"_s); }

    void write(const QByteArray& bytes) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    /// Error number of reading these bytes, 0 where they were read; then every table must hold the rows it declares.
    Long read(const QByteArray& bytes, CollectedRows& rows) const {
        write(bytes);
        const Long error = errorOf([&] { ReaderProcess(path(), patience).readInto(rows); });
        if (error != 0) return error;
        for (const auto& table : std::as_const(rows.tables))
            EXPECT_EQ(table.rows.size(), table.expected);
        return 0;
    }

    Long read(const QByteArray& bytes) const {
        CollectedRows rows;
        return read(bytes, rows);
    }

    QTemporaryDir folder_;
};

} // namespace

TEST_F(DamagedFiles, emptyForeignAndMisnamedFiles) {
    EXPECT_EQ(read({}), 3343);
    EXPECT_EQ(read("Guten Tag"), 3343);
    EXPECT_EQ(read(QByteArray(100000, 'x')), 3343);
    EXPECT_EQ(read(QByteArray(100000, '\0')), 3343);
    EXPECT_EQ(read(smallCatalogue().first(20)), 3343);
    QByteArray future = smallCatalogue();
    future[0x14] = 77;
    EXPECT_EQ(read(future), 3343);
}

TEST_F(DamagedFiles, cutOffAnywhere) {
    const QByteArray whole = smallCatalogue();
    for (qsizetype length = pageSize; length < whole.size(); length += pageSize)
        EXPECT_EQ(read(whole.first(length)), 3049) << length;
    for (const qsizetype length : {whole.size() - 1, whole.size() / 2 + 17, pageSize + 1})
        EXPECT_EQ(read(whole.first(length)), 3049) << length;
}

TEST_F(DamagedFiles, pagesOfZeros) {
    const QByteArray whole = smallCatalogue();
    CollectedRows good;
    ASSERT_EQ(read(whole, good), 0);
    for (qsizetype page = 1; page < whole.size() / pageSize; ++page) {
        QByteArray damaged = whole;
        damaged.replace(page * pageSize, pageSize, QByteArray(pageSize, '\0'));
        CollectedRows rows;
        if (read(damaged, rows) != 0) continue;
        // A page that holds nothing of the tables: an index, or system tables that no row hangs on.
        for (const CatalogueTable& table : catalogueTables())
            EXPECT_EQ(rows.sorted(table.name), good.sorted(table.name)) << "page " << page;
    }
}

TEST_F(DamagedFiles, aRenamedTableIsMissing) {
    QByteArray renamed = smallCatalogue();
    const QByteArray plain = QByteArray::fromHex("4100520054004b0041005400"), compressed("ARTKAT");
    renamed.replace(compressed, "ARTKAX").replace(plain, QByteArray(plain).replace(10, 1, "X"));
    ASSERT_NE(renamed, smallCatalogue());
    EXPECT_EQ(read(renamed), 3011);
}

TEST_F(DamagedFiles, aRenamedColumnIsMissing) {
    QByteArray renamed = smallCatalogue();
    const QByteArray parent = QByteArray::fromHex("50006100720065006e007400");
    renamed.replace(parent, QByteArray(parent).replace(10, 1, "X"));
    ASSERT_NE(renamed, smallCatalogue());
    EXPECT_EQ(read(renamed), 3011);
}

TEST_F(DamagedFiles, changedBytes) {
    const QByteArray whole = smallCatalogue();
    const int rounds = qEnvironmentVariableIsSet("MKL_FULL") ? 20000 : 300;
    const auto seed = quint32(qEnvironmentVariableIntValue("MKL_SEED"));
    std::mt19937 chance(seed);
    int refused = 0;
    for (int round = 0; round < rounds; ++round) {
        QByteArray damaged = whole;
        for (quint32 changes = 1 + chance() % 8; changes > 0; --changes) {
            const qsizetype page = chance() % (whole.size() / pageSize);
            // The heads of the pages steer the reader.
            const qsizetype offset = chance() % (chance() % 2 == 0 ? 128 : pageSize);
            damaged[page * pageSize + offset] = char(chance());
        }
        const Long error = read(damaged);
        ASSERT_TRUE(error == 0 || error == 3011 || error == 3049 || error == 3343 || error == 3421)
            << "error " << error << ", seed " << seed << ", round " << round;
        refused += error != 0;
    }
    EXPECT_GT(refused, rounds / 10);
}

TEST_F(DamagedFiles, theTargetIsAsBefore) {
    QByteArray damaged = smallCatalogue();
    damaged.replace(55 * pageSize, pageSize, QByteArray(pageSize, '\0'));
    write(damaged);
    EXPECT_EQ(errorOf([&] { importCatalogue(path(), target()); }), 3049);
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"probe.mdb"_s});
}

TEST_F(DamagedFiles, theSamplesAreRefused) {
    const QDir samples(QStringLiteral(MKL_SOURCE_DIR "/../shared/data/more/damaged"));
    if (!samples.exists()) GTEST_SKIP() << "the damaged samples do not stand beside this checkout";
    for (const QString& name : samples.entryList(QDir::Files)) {
        EXPECT_EQ(errorOf([&] { importCatalogue(samples.filePath(name), target()); }), 3049) << name.toStdString();
        EXPECT_FALSE(QFile::exists(target()));
    }
}
