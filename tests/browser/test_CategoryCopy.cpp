#include "browser/CategoryCopy.h"
#include "browser/DatedHost.h"
#include "support/FixedReplica.h"

using namespace mkl;

namespace {

const QString forest = u"43 Schrauben: 12 Senkkopf, 30 Ösen\n"
                       "  413 Holz {inaktiv}: 7 Ahle, 12 Senkkopf\n"
                       "    423 Spax {Position 5}\n"
                       "  433 Blech {Position 9}: 30 Ösen\n"
                       "53 Werkzeug {inaktiv}: 12 Senkkopf\n"
                       "63 Ähren {Absender 7}\n"
                       "  633 Erste\n"
                       "  643 Zweite\n"_s;

class CategoryCopyTest : public DatedHost {
protected:
    CategoryCopyTest()
        : DatedHost(forest) {
        browser->setHelper(makeRef<FixedReplica>(3));
        show(43);
    }

    Long copy(Long category, Long target) {
        user.answers = {vbYes};
        return hub().categoryTransfer->TVDragCategory_Copy(*node(category), *node(target));
    }
    Variant value(const QString& column, Long category) const {
        return catalogue.database()
            ->OpenRecordset(
                u"SELECT [%1] AS V FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=%2"_s.arg(column).arg(
                    category),
                dao::dbOpenSnapshot)
            ->value(u"V");
    }
    Long count(const QString& table) const {
        return catalogue.database()
            ->OpenRecordset(u"SELECT Count(*) AS N FROM [%1]"_s.arg(table), dao::dbOpenSnapshot)
            ->value(u"N")
            .toLong();
    }
    void forbid(const QString& what) const {
        catalogue.run(u"CREATE TRIGGER verboten BEFORE %1 BEGIN SELECT RAISE(ABORT, 'nein'); END"_s.arg(what));
    }
};

} // namespace

TEST_F(CategoryCopyTest, asksLetterForLetter) {
    user.answers = {vbNo};
    EXPECT_EQ(hub().categoryTransfer->TVDragCategory_Copy(*node(43), *node(63)), 0);
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().text,
              u"Soll die Kategorie 'Schrauben' (samt Unterkaetgorien und zugehörigen Artikeln) "
              "wirklich in die Kategorie 'Ähren' kopiert werden?"_s);
    EXPECT_EQ(user.shown.first().flags, 36);
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 8);
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryCopyTest, takesSubtreeAndArticlesAlong) {
    EXPECT_EQ(copy(43, 63), 653);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(level(63), u"633@1 643@2 653@3*"_s); // behind the two children
    EXPECT_EQ(level(653), u"663@1* 683@9*"_s);     // the subtree keeps its positions
    EXPECT_EQ(level(663), u"673@5*"_s);
    EXPECT_EQ(articles(653), u"12@1* 30@2*"_s);
    EXPECT_EQ(articles(663), u"7@1* 12@2*"_s);
    EXPECT_EQ(articles(683), u"30@1*"_s);
    EXPECT_EQ(value(u"Kategoriename"_s, 673).toText(), u"Spax"_s);
    // The source stays as it was.
    EXPECT_EQ(level(0), u"43@1 53@2 63@3"_s);
    EXPECT_EQ(level(43), u"413@1 433@9"_s);
    EXPECT_EQ(articles(43), u"12@1 30@2"_s);
    EXPECT_FALSE(browser->Edited());
    EXPECT_EQ(depth(), 0);
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST_F(CategoryCopyTest, theCopyIsActive) {
    EXPECT_EQ(copy(53, 63), 653);
    EXPECT_TRUE(value(u"Aktiv"_s, 653).toBoolean());
    EXPECT_FALSE(value(u"Aktiv"_s, 53).toBoolean());
    EXPECT_EQ(copy(43, 53), 663);
    EXPECT_TRUE(value(u"Aktiv"_s, 673).toBoolean()); // of 413
}

TEST_F(CategoryCopyTest, allOtherColumnsComeAlongButTheID) {
    catalogue.run(
        u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Bezeichnung\"='Größe ''ß''', \"Absender-Schlüssel\"=7, \"ID\"=88 "
        "WHERE \"Kategorie-Schlüssel\"=53"_s);
    EXPECT_EQ(copy(53, 43), 653);
    EXPECT_EQ(value(u"Bezeichnung"_s, 653).toText(), u"Größe 'ß'"_s);
    EXPECT_EQ(value(u"Absender-Schlüssel"_s, 653).toLong(), 7);
    EXPECT_EQ(value(u"Kategoriename"_s, 653).toText(), u"Werkzeug"_s);
    EXPECT_TRUE(value(u"ID"_s, 653).isNull());
}

TEST_F(CategoryCopyTest, aColumnOfTheUsersOwnComesAlong) {
    catalogue.run(u"ALTER TABLE \"ARTIKEL/KATEGORIEN\" ADD COLUMN \"Farbe\" TEXT; "
                  "UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Farbe\"='rot' WHERE \"Kategorie-Schlüssel\"=413"_s);
    EXPECT_EQ(copy(43, 63), 653);
    EXPECT_EQ(value(u"Farbe"_s, 663).toText(), u"rot"_s);
    EXPECT_TRUE(value(u"Farbe"_s, 653).isNull());
}

TEST_F(CategoryCopyTest, withoutChildrenItIsTheFirst) {
    EXPECT_EQ(copy(633, 53), 653);
    EXPECT_EQ(level(53), u"653@1*"_s);
}

TEST_F(CategoryCopyTest, whatFiltersHideComesAlong) {
    browser->setFilter(acbPaneCategoryTree, u"[Kategoriename]<>'Blech'"_s);
    browser->setFilter(acbPaneArticleList, u"[Artikelname] Like 'S*'"_s);
    show(43);
    EXPECT_EQ(copy(43, 63), 653);
    EXPECT_EQ(level(653), u"663@1* 683@9*"_s);
    EXPECT_EQ(articles(653), u"12@1* 30@2*"_s);
}

TEST_F(CategoryCopyTest, theRunningNumberOfTheReplicaGoesOn) {
    browser->setHelper(makeRef<FixedReplica>(0));
    EXPECT_EQ(copy(43, 63), 10); // replica 0 has no key yet
    EXPECT_EQ(level(10), u"20@1* 40@9*"_s);
    EXPECT_EQ(level(20), u"30@5*"_s);
}

TEST_F(CategoryCopyTest, withoutHelperNothingIsCopied) {
    browser->setHelper({});
    EXPECT_EQ(copy(43, 63), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"NewID: 91"_s, u"TVDragCategory_Copy: 91"_s}));
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 8);
    EXPECT_EQ(depth(), 0);
    screen().setMousePointer(vbDefault); // a failed key leaves the hourglass
}

TEST_F(CategoryCopyTest, aKeyThatFailedIsNoNumberToGoOnFrom) {
    catalogue.addCategory({.key = 3, .name = u"Kurz"_s, .parent = 53});
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" > 600"_s);
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Kategorie-Schlüssel\" = \"Kategorie-Schlüssel\" - 1 WHERE "
                  "\"Kategorie-Schlüssel\" > 10"_s);
    browser->Populate();
    EXPECT_EQ(copy(42, 52), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"NewID: 13"_s, u"TVDragCategory_Copy: 13"_s}));
    EXPECT_EQ(depth(), 0);
    screen().setMousePointer(vbDefault);
}

TEST_F(CategoryCopyTest, theFirstRowThatFailsUndoesAll) {
    forbid(u"INSERT ON ARTKAT WHEN NEW.\"Artikel-Schlüssel\"=30 AND NEW.\"Kategorie-Schlüssel\"=653"_s);
    EXPECT_EQ(copy(43, 63), 0);
    EXPECT_TRUE(takeReports().value(0).startsWith(u"TVDragCategory_Copy: "_s));
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 8);
    EXPECT_EQ(count(u"ARTKAT"_s), 6);
    EXPECT_EQ(depth(), 0);
}

// A level that fails is reported and left; what calls it goes on.
TEST_F(CategoryCopyTest, aFailureInTheSubtreeLeavesItsLevelOut) {
    forbid(u"INSERT ON \"ARTIKEL/KATEGORIEN\" WHEN NEW.\"Kategoriename\"='Spax'"_s);
    EXPECT_EQ(copy(43, 63), 653);
    const QStringList reports = takeReports();
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports.first().startsWith(u"TVDragCategory_CopySub: "_s));
    EXPECT_EQ(level(653), u"663@1* 683@9*"_s);
    EXPECT_EQ(level(663), QString());
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryCopyTest, aVanishedTargetTakesNothingIn) {
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=53"_s);
    EXPECT_EQ(copy(43, 53), 0);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 7);
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryCopyTest, aVanishedSourceIsReported) {
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\"=53"_s);
    EXPECT_EQ(copy(53, 63), 0);
    EXPECT_EQ(takeReports(), QStringList{u"TVDragCategory_Copy: 3021"_s});
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 7);
}

// The screen is older than the rows: the target hangs below the source by now, and the copy would have no end.
TEST_F(CategoryCopyTest, aTargetWithinTheSourceIsRefused) {
    catalogue.run(u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Parent\"=423 WHERE \"Kategorie-Schlüssel\"=63"_s);
    EXPECT_EQ(copy(43, 63), 0);
    ASSERT_EQ(user.shown.size(), 2);
    EXPECT_EQ(user.shown.last().flags, 16);
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 8);
    EXPECT_EQ(depth(), 0);
}

TEST_F(CategoryCopyTest, aLongChainIsCopied) {
    constexpr Long length = 3000;
    Long parent = 53;
    catalogue.workspace()->BeginTrans();
    for (Long link = 0; link < length; ++link, parent = 1000003 + 10 * link - 10)
        catalogue.addCategory({.key = 1000003 + 10 * link, .name = u"K"_s, .parent = parent});
    catalogue.workspace()->CommitTrans();
    show(53);
    EXPECT_NE(copy(53, 63), 0);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 8 + 2 * length + 1);
}

TEST_F(CategoryCopyTest, closingTheControlInTheQuestionEndsIt) {
    user.answers = {vbYes};
    user.whileShown = [this] { browser.reset(); };
    const auto kept = hub().shared_from_this();
    const Ref<Node> source = node(43), target = node(63);
    EXPECT_EQ(kept->categoryTransfer->TVDragCategory_Copy(*source, *target), 0);
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s), 8);
    EXPECT_EQ(depth(), 0);
}
