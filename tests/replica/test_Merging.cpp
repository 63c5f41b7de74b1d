#include "SiteStatements.h"
#include "Sites.h"
#include "catalogue/CatalogueRepair.h"
#include "catalogue/CatalogueReplication.h"
#include "support/CheckFindings.h"
#include "support/Printing.h"

#include <QRegularExpression>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

QString renameCategory(int key, const QString& name) {
    return u"UPDATE [ARTIKEL/KATEGORIEN] SET [Kategoriename]='%1' WHERE [Kategorie-Schlüssel]=%2"_s.arg(name).arg(key);
}

/// Roots 11 to 71 and articles 1 to 5.
QStringList catalogue() {
    QStringList statements;
    for (int i = 1; i <= 7; ++i)
        statements.append(addCategory(10 * i + 1, u"Null"_s, i));
    for (int i = 1; i <= 5; ++i)
        statements.append(u"INSERT INTO ARTIKEL ([Artikel-Schlüssel], [Artikelname]) VALUES (%1, 'Ä%1')"_s.arg(i));
    statements.append(assign(1, 11, 1));
    statements.append(u"INSERT INTO [ARTIKEL/PREISE] ([Preislisten-Schlüssel], [Artikel-Schlüssel]) VALUES (1, 1)"_s);
    return statements;
}

class Merging : public testing::Test {
protected:
    /// The last digits of all keys that bear this condition, sorted and without doubles.
    QByteArray digits(std::size_t site, const QString& column, const QString& table, const QString& condition) {
        return sites[site].native(
            u"SELECT string_agg(DISTINCT right(\"%1\"::text, 1), '' ORDER BY right(\"%1\"::text, 1)) FROM \"%2\" "
            "WHERE %3"_s.arg(column, table, condition));
    }
    QByteArray nameOf(std::size_t site, int key) {
        return sites[site].native(
            u"SELECT \"Kategoriename\" FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = %1"_s.arg(key));
    }
    RepairReport repair(std::size_t site) {
        const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
        const Ref<dao::Database> database = openCatalogue(*workspace, sites[site].url());
        return repairCatalogue(*workspace, *database);
    }

    Sites sites{2, catalogue()};
};

} // namespace

TEST_F(Merging, theSecondSiteTakesTheRowsOfTheFirst) {
    EXPECT_TRUE(sites.becomeEqual());
    EXPECT_EQ(sites[1].native(u"SELECT count(*) FROM \"ARTIKEL/KATEGORIEN\""_s), "7");
    EXPECT_EQ(sites[1].native(u"SELECT \"Artikelname\" FROM \"ARTIKEL\" WHERE \"Artikel-Schlüssel\" = 3"_s), "Ä3");
    EXPECT_FALSE(sites[1].check().isDamaged());
}

TEST_F(Merging, bothWriteAtOnceAndAcrossACut) {
    const auto write = [&](std::size_t site, int round) {
        const int digit = static_cast<int>(site) + 1;
        QStringList statements;
        for (int i = 0; i < 30; ++i) {
            const int key = 1000 * round + 10 * i + digit;
            statements.append(addCategory(key, QString::number(10 * digit + 1), 1000 * round + 2 * i + digit));
            statements.append(assign(1 + i % 5, key, 1));
            statements.append(u"INSERT INTO [ARTIKEL/PREISE] ([Preislisten-Schlüssel], [Artikel-Schlüssel]) "
                              "VALUES (%1, %2)"_s.arg(round)
                                  .arg(1 + i % 5));
        }
        sites[site].execute(statements);
    };
    write(0, 1);
    write(1, 1);
    EXPECT_TRUE(sites.becomeEqual());
    sites.cut();
    write(0, 2);
    write(1, 2);
    EXPECT_NE(sites[0].rows(), sites[1].rows());
    sites.join();
    EXPECT_TRUE(sites.becomeEqual());
    EXPECT_EQ(sites[0].native(u"SELECT count(*) FROM \"ARTIKEL/KATEGORIEN\""_s), "127");
    EXPECT_EQ(sites[0].native(u"SELECT count(*) FROM \"ARTIKEL/PREISE\""_s), "121");
    EXPECT_EQ(sites[0].native(u"SELECT count(*) || ' ' || count(DISTINCT \"ArtKatID\") FROM \"ARTKAT\""_s), "121 121");
    EXPECT_EQ(digits(0, u"ArtKatID"_s, u"ARTKAT"_s, u"right(\"Kategorie-Schlüssel\"::text, 1) = '2'"_s), "2");
    EXPECT_FALSE(sites[0].check().isDamaged());
}

TEST_F(Merging, ofTwoChangesOfOneRowTheLaterCommitWins) {
    sites.cut();
    sites[0].execute({renameCategory(11, u"früher"_s)});
    sites[1].execute({renameCategory(11, u"später"_s)});
    sites[1].execute({renameCategory(21, u"alt"_s)});
    sites[0].execute({renameCategory(21, u"neu"_s)});
    sites.join();
    EXPECT_TRUE(sites.becomeEqual());
    EXPECT_EQ(nameOf(0, 11), "später");
    EXPECT_EQ(nameOf(0, 21), "neu");
}

TEST_F(Merging, whatHarmlessCommandsLeaveIsFoundOnBothAndMendedFromOne) {
    sites.cut();
    sites[0].execute({moveCategory(11, 21), moveCategory(31, 41),
                      u"DELETE FROM [ARTIKEL/KATEGORIEN] WHERE "
                      "[Kategorie-Schlüssel]=61"_s,
                      assign(1, 71, 1), assign(2, 71, 2), addCategory(81, u"Null"_s, 8)});
    sites[1].execute({moveCategory(21, 11), moveCategory(41, 51), moveCategory(51, 31), addCategory(82, u"61"_s, 1),
                      assign(3, 61, 1), assign(3, 71, 1), assign(1, 71, 2), addCategory(92, u"Null"_s, 8)});
    sites.join();
    ASSERT_TRUE(sites.becomeEqual());

    const CatalogueCheck found = sites[0].check();
    EXPECT_EQ(found.rings, (QList<QList<Long>>{{11, 21}, {31, 41, 51}}));
    ASSERT_EQ(found.danglingParents.size(), 1);
    EXPECT_EQ(found.danglingParents[0].key, 82);
    EXPECT_EQ(found.missingCategories.size(), 1);
    EXPECT_EQ(found.pairs.size(), 1);
    EXPECT_EQ(found.articlePositions.size(), 2);
    EXPECT_EQ(found.siblingPositions.size(), 1);
    EXPECT_EQ(findingsOf(sites[1].check()), findingsOf(found));

    const RepairReport report = repair(0);
    EXPECT_FALSE(report.changes.isEmpty());
    ASSERT_TRUE(sites.becomeEqual());
    for (std::size_t site = 0; site < sites.count(); ++site) {
        EXPECT_FALSE(sites[site].check().isDamaged());
        EXPECT_EQ(sites[site].check().unreachableCategories, 0);
        EXPECT_EQ(sites[site].native(u"SELECT count(*) FROM \"ARTIKEL/KATEGORIEN\""_s), "9");
        EXPECT_EQ(sites[site].native(u"SELECT count(*) FROM \"ARTKAT\" WHERE \"Kategorie-Schlüssel\" = 71"_s), "3");
    }
    EXPECT_TRUE(repair(1).changes.isEmpty());
}
