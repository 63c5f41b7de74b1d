#include "TestCatalogue.h"
#include "catalogue/CatalogueInfo.h"
#include "catalogue/CatalogueTree.h"
#include "catalogue/VisibleText.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class Tree : public testing::Test {
protected:
    void SetUp() override {
        catalogue.addCategory(13, "NULL", 2);
        catalogue.addCategory(23, "NULL", 1);
        catalogue.addCategory(33, "13", 1);
        catalogue.addCategory(43, "33", 1);
        catalogue.addCategory(53, "99", 1);
        catalogue.addArticle(1);
        catalogue.addArticle(2);
        catalogue.assign(10, 1, 33, 2);
        catalogue.assign(11, 2, 33, 1);
    }

    QStringList lines(const CatalogueTree& tree) {
        QStringList result;
        tree.write(catalogue.database(), [&](const QString& line) { result.append(line); });
        return result;
    }

    TestCatalogue catalogue;
};

} // namespace

TEST_F(Tree, aPictureInTheOrderOfPositions) {
    EXPECT_EQ(lines({}), (QStringList{u"23 K23"_s, u"13 K13"_s, u"  33 K33: 2 A2, 1 A1"_s, u"    43 K43"_s}));
}

TEST_F(Tree, withoutArticlesAndToADepth) {
    CatalogueTree tree;
    tree.articles = false;
    tree.levels = 2;
    EXPECT_EQ(lines(tree), (QStringList{u"23 K23"_s, u"13 K13"_s, u"  33 K33"_s}));
}

TEST_F(Tree, oneBranch) {
    CatalogueTree tree;
    tree.root = Variant(33);
    EXPECT_EQ(lines(tree), (QStringList{u"33 K33: 2 A2, 1 A1"_s, u"  43 K43"_s}));
    tree.root = Variant(99);
    EXPECT_EQ(errorOf([&] { lines(tree); }), 3021);
}

TEST_F(Tree, whatNoRootReachesIsCounted) {
    EXPECT_EQ(CatalogueTree().write(catalogue.database(), [](const QString&) {}), 1);
}

TEST_F(Tree, aRingEndsTheWalk) {
    catalogue.addCategory(63, "73", 1);
    catalogue.addCategory(73, "63", 1);
    CatalogueTree tree;
    tree.root = Variant(63);
    EXPECT_EQ(lines(tree), (QStringList{u"63 K63"_s, u"  73 K73"_s}));
}

TEST_F(Tree, tenThousandLevels) {
    QString rows;
    for (int key = 1000; key < 11000; ++key)
        rows += u"INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", Parent, \"Order\") VALUES (%1, %2, 1);"_s
                    .arg(key)
                    .arg(key - 1);
    catalogue.run(u"BEGIN;"_s + rows + u"COMMIT;"_s);
    catalogue.addCategory(999, "NULL", 3);
    const CatalogueInfo info = CatalogueInfo::of(catalogue.database());
    EXPECT_EQ(info.categoriesPerLevel.size(), 10001);
    EXPECT_EQ(lines({}).last().trimmed(), u"10999"_s);
}

TEST_F(Tree, figures) {
    const CatalogueInfo info = CatalogueInfo::of(catalogue.database());
    EXPECT_EQ(info.roots, (QList<Long>{23, 13}));
    EXPECT_EQ(info.categoriesPerLevel, (QList<qint64>{2, 1, 1}));
    EXPECT_EQ(info.unreachableCategories, 1);
    EXPECT_EQ(info.leaves, 3);
    EXPECT_EQ(info.largestSiblingGroup, 2);
    EXPECT_EQ(info.activeArticles, 2);
    EXPECT_EQ(info.highestCategoryKey, Variant(53));
    EXPECT_EQ(info.highestAssignmentKey, Variant(11));
    EXPECT_GT(info.fileBytes, 0);
    EXPECT_TRUE(info.updatable);
}

TEST(CatalogueInfo, ofAnEmptyCatalogue) {
    TestCatalogue catalogue;
    const CatalogueInfo info = CatalogueInfo::of(catalogue.database());
    EXPECT_TRUE(info.roots.isEmpty() && info.categoriesPerLevel.isEmpty());
    EXPECT_TRUE(info.highestArticleKey.isNull() && info.highestCategoryKey.isNull());
}

TEST(VisibleText, controlCharactersAreSpelledOut) {
    EXPECT_EQ(visibleText(u"Säge 😀 „x“"_s), u"Säge 😀 „x“"_s);
    EXPECT_EQ(visibleText(QString::fromUtf16(u"a\0b\nc\td\x1b[31m", 12)), u"a\\u{0}b\\nc\\td\\u{1b}[31m"_s);
    EXPECT_EQ(visibleText(QString(QChar(0x202E)) + QChar(0x2028)), u"\\u{202e}\\u{2028}"_s);
}
