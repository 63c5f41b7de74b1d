// What comes back of the user's view when a pane is read again.
#include "browser/BrowserHost.h"

#include <QTest>

using namespace mkl;

namespace {

QString largeForest() {
    QString picture;
    for (int root = 1; root <= 60; ++root)
        picture += u"%1 Gruppe %1\n  %2 Untergruppe %1\n    %3 Sorte %1\n"_s.arg(root).arg(100 + root).arg(200 + root);
    return picture;
}

class KeptViewTest : public BrowserHost {
protected:
    KeptViewTest()
        : BrowserHost(largeForest()) {
        for (Long article = 1; article <= 80; ++article) {
            catalogue.addArticle(article, u"Artikel %1"_s.arg(article));
            catalogue.assign(article, 1, article);
            catalogue.assign(article, 2, article);
        }
        browser->show();
        browser->setKeepsView(true);
        browser->Populate();
        QCoreApplication::processEvents();
        events.take();
    }

    static QString top(const ItemView& view) { return view.keysInSight().value(0); }
    static void scroll(ItemView& view, const Ref<Item>& item) { view.setTopItem(*item); }
    QStringList expanded() const {
        QStringList keys;
        for (const Ref<Node>& each : tree().Nodes())
            if (each->Expanded()) keys << each->Key();
        return keys;
    }
    void readAgain(acbPanes pane) const {
        browser->RefreshPane(pane);
        QCoreApplication::processEvents();
    }
};

} // namespace

TEST_F(KeptViewTest, expandedNodesComeBack) {
    node(1)->setExpanded(true);
    node(101)->setExpanded(true);
    node(40)->setExpanded(true);
    events.take();
    readAgain(acbPaneCategoryTree);
    EXPECT_EQ(expanded(), (QStringList{u"A-1"_s, u"A-101"_s, u"A-40"_s}));
    EXPECT_EQ(node(1)->Image(), u"OrdnerAufOn"_s);
    EXPECT_EQ(events.take(), QStringList());
    browser->setWorkgroupFilter(u"> 0"_s);
    EXPECT_EQ(expanded().size(), 3);
}

TEST_F(KeptViewTest, withoutThePropertyAllIsCollapsed) {
    browser->setKeepsView(false);
    node(40)->setExpanded(true);
    readAgain(acbPaneCategoryTree);
    EXPECT_EQ(expanded(), QStringList());
    EXPECT_FALSE(ArtCatBrowser().keepsView());
}

TEST_F(KeptViewTest, nodesThatAreGoneAreForgotten) {
    node(40)->setExpanded(true);
    node(50)->setExpanded(true);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = 240"_s);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = 140"_s);
    readAgain(acbPaneCategoryTree);
    EXPECT_EQ(expanded(), QStringList{u"A-50"_s}); // 40 has no children any more
}

TEST_F(KeptViewTest, theTreeIsScrolledBackAsFarAsTheSelectionAllows) {
    browser->setSelected(acbPaneCategoryTree, 31);
    QCoreApplication::processEvents();
    scroll(tree(), node(28));
    ASSERT_TRUE(tree().keysInSight().contains(u"A-31"_s));
    readAgain(acbPaneCategoryTree);
    EXPECT_EQ(top(tree()), u"A-28"_s);
    scroll(tree(), node(1)); // the selected node comes into view all the same
    ASSERT_FALSE(tree().keysInSight().contains(u"A-31"_s));
    readAgain(acbPaneCategoryTree);
    EXPECT_TRUE(tree().keysInSight().contains(u"A-31"_s));
}

TEST_F(KeptViewTest, theNextRowThatStillExistsIsOnTop) {
    browser->setSelected(acbPaneCategoryTree, 31);
    QCoreApplication::processEvents();
    scroll(tree(), node(28));
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" IN (28, 128, 228)"_s);
    readAgain(acbPaneCategoryTree);
    EXPECT_EQ(top(tree()), u"A-29"_s);
}

TEST_F(KeptViewTest, theListIsScrolledBack) {
    browser->setSelected(acbPaneArticleList, 43);
    scroll(list(), list().ListItems().Item(40));
    const QString before = top(list());
    ASSERT_EQ(before, list().ListItems().Item(40)->Key());
    readAgain(acbPaneArticleList);
    EXPECT_EQ(top(list()), before);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 43);
    browser->setKeepsView(false);
    readAgain(acbPaneArticleList);
    EXPECT_NE(top(list()), before);
}

TEST_F(KeptViewTest, theListIsScrolledBackWhenTheTreeIsReadToo) {
    browser->setSelected(acbPaneArticleList, 43);
    scroll(list(), list().ListItems().Item(40));
    const QString before = top(list());
    readAgain(acbPaneCategoryTree);
    EXPECT_EQ(top(list()), before);
    EXPECT_EQ(browser->Selected(acbPaneArticleList), 43);
}

TEST_F(KeptViewTest, anotherCategoryBeginsAtItsSelection) {
    browser->setSelected(acbPaneArticleList, 1);
    scroll(list(), list().ListItems().Item(40));
    browser->setSelected(acbPaneCategoryTree, 2);
    QCoreApplication::processEvents();
    EXPECT_EQ(top(list()), list().ListItems().Item(1)->Key());
}

TEST_F(KeptViewTest, aControlThatDoesNotShowKeepsWhatIsExpanded) {
    browser->hide();
    node(40)->setExpanded(true);
    browser->Populate();
    EXPECT_EQ(expanded(), QStringList{u"A-40"_s});
    browser->show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(node(40)->Expanded());
    EXPECT_TRUE(tree().isExpanded(tree().model()->index(39, 0)));
}
