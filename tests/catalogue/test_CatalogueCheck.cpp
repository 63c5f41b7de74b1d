#include "TestCatalogue.h"
#include "catalogue/CatalogueCheck.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class Check : public testing::Test {
protected:
    CatalogueCheck check() { return CatalogueCheck::of(catalogue.database()); }

    TestCatalogue catalogue;
};

} // namespace

TEST_F(Check, anEmptyAndAPlainCatalogueAreSound) {
    EXPECT_FALSE(check().isDamaged());
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "13", 1);
    catalogue.addArticle(1);
    catalogue.assign(1, 1, 13, 1);
    catalogue.assign(2, 1, 23, 1);
    const CatalogueCheck found = check();
    EXPECT_FALSE(found.isDamaged());
    EXPECT_TRUE(found.siblingGaps.isEmpty() && found.articleGaps.isEmpty());
}

TEST_F(Check, danglingParents) {
    catalogue.addCategory(13, "99", 1);
    catalogue.addCategory(23, "13", 1);
    const CatalogueCheck found = check();
    EXPECT_TRUE(found.isDamaged());
    ASSERT_EQ(found.danglingParents.size(), 1);
    EXPECT_EQ(found.danglingParents[0].key, 13);
    EXPECT_EQ(found.danglingParents[0].missing, Variant(99));
    EXPECT_EQ(found.unreachableCategories, 2);
    EXPECT_TRUE(found.rings.isEmpty());
}

TEST_F(Check, ringsOfOneTwoAndThree) {
    catalogue.addCategory(5, "5", 1);
    catalogue.addCategory(13, "23", 1);
    catalogue.addCategory(23, "13", 1);
    catalogue.addCategory(43, "63", 1);
    catalogue.addCategory(53, "43", 1);
    catalogue.addCategory(63, "53", 1);
    catalogue.addCategory(73, "63", 2); // hangs on a ring
    const CatalogueCheck found = check();
    EXPECT_TRUE(found.isDamaged());
    EXPECT_EQ(found.rings, (QList<QList<Long>>{{5}, {13, 23}, {43, 63, 53}}));
    EXPECT_EQ(found.unreachableCategories, 7);
}

TEST_F(Check, doubledPositionsAmongSiblings) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "NULL", 1);
    catalogue.addCategory(33, "13", 2);
    catalogue.addCategory(43, "13", 2);
    const CatalogueCheck found = check();
    ASSERT_EQ(found.siblingPositions.size(), 2);
    EXPECT_EQ(found.siblingPositions[0].owner, Variant());
    EXPECT_EQ(found.siblingPositions[0].keys, (QList<Long>{13, 23}));
    EXPECT_EQ(found.siblingPositions[1].owner, Variant(13));
    EXPECT_EQ(found.siblingPositions[1].position, Variant(2));
    EXPECT_TRUE(found.isDamaged());
}

TEST_F(Check, doubledPositionsAndPairsInACategory) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addArticle(1);
    catalogue.addArticle(2);
    catalogue.assign(10, 1, 13, 1);
    catalogue.assign(11, 2, 13, 1);
    catalogue.assign(12, 1, 13, 2);
    const CatalogueCheck found = check();
    ASSERT_EQ(found.articlePositions.size(), 1);
    EXPECT_EQ(found.articlePositions[0].keys, (QList<Long>{10, 11}));
    ASSERT_EQ(found.pairs.size(), 1);
    EXPECT_EQ(found.pairs[0].article, 1);
    EXPECT_EQ(found.pairs[0].category, 13);
    EXPECT_EQ(found.pairs[0].keys, (QList<Long>{10, 12}));
    EXPECT_TRUE(found.isDamaged());
}

TEST_F(Check, orphans) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addArticle(1);
    catalogue.assign(10, 1, 99, 1);
    catalogue.assign(11, 98, 13, 1);
    catalogue.run(u"INSERT INTO ARTKAT (ArtKatID) VALUES (12)"_s);
    const CatalogueCheck found = check();
    ASSERT_EQ(found.missingCategories.size(), 2);
    EXPECT_EQ(found.missingCategories[0].key, 10);
    EXPECT_EQ(found.missingCategories[0].missing, Variant(99));
    EXPECT_EQ(found.missingCategories[1].missing, Variant());
    ASSERT_EQ(found.missingArticles.size(), 2);
    EXPECT_EQ(found.missingArticles[0].missing, Variant(98));
    EXPECT_TRUE(found.isDamaged());
}

TEST_F(Check, gapsAreARemark) {
    catalogue.addCategory(13, "NULL", 2);
    catalogue.addCategory(23, "13", 1);
    catalogue.addCategory(33, "13", 3);
    catalogue.addArticle(1);
    catalogue.assign(10, 1, 23, 7);
    const CatalogueCheck found = check();
    EXPECT_FALSE(found.isDamaged());
    EXPECT_EQ(found.siblingGaps, (QList<Variant>{Variant(), Variant(13)}));
    EXPECT_EQ(found.articleGaps, QList<Long>{23});
}
