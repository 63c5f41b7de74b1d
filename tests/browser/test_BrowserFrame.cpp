#include "browser/BrowserHost.h"
#include "controls/Extender.h"
#include "core/App.h"

#include <QDir>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {
class BrowserFrame : public BrowserHost {
protected:
    BrowserFrame()
        : BrowserHost(u"41 Schrauben"_s) {}
};
} // namespace

TEST_F(BrowserFrame, startValues) {
    EXPECT_EQ(browser->WorkgroupFilter(), u"Like '*'"_s);
    EXPECT_EQ(browser->CurrentSenderID(), 0);
    EXPECT_EQ(browser->Imageset(), acbImageset1);
    EXPECT_EQ(browser->HelpContextID(), 1024);
    EXPECT_FALSE(browser->Edited());
    EXPECT_FALSE(browser->HelpEvent());
    EXPECT_TRUE(browser->ShowStatusBar());
    EXPECT_TRUE(browser->ShowArticlePool());
    EXPECT_TRUE(browser->ShowArticleList());
    for (const acbPanes pane : {acbPaneArticlePool, acbPaneArticleList, acbPaneCategoryTree}) {
        EXPECT_EQ(browser->Filter(pane), QString());
        EXPECT_EQ(browser->Selected(pane), 0);
    }
}

TEST_F(BrowserFrame, filtersBelongToTheirPane) {
    browser->setFilter(acbPaneArticleList, u"[Order]=1"_s);
    EXPECT_EQ(browser->Filter(acbPaneArticleList), u"[Order]=1"_s);
    EXPECT_EQ(browser->Filter(acbPaneCategoryTree), QString());
}

TEST_F(BrowserFrame, anotherPaneIsIgnored) {
    for (const Long number : {-1, 3, 99}) {
        const auto pane = static_cast<acbPanes>(number);
        browser->setFilter(pane, u"x"_s);
        EXPECT_EQ(browser->Filter(pane), QString());
        EXPECT_EQ(browser->Selected(pane), 0);
    }
}

TEST_F(BrowserFrame, anEmptyWorkgroupFilterReadsBackWhole) {
    browser->setWorkgroupFilter(u"IN(3)"_s);
    EXPECT_EQ(browser->WorkgroupFilter(), u"IN(3)"_s);
    browser->setWorkgroupFilter(QString());
    EXPECT_EQ(browser->WorkgroupFilter(), u"Like '*'"_s);
}

TEST_F(BrowserFrame, theSameWorkgroupInOtherLettersReadsNothing) {
    browser->Populate();
    catalogue.addCategory({.key = Long(42), .name = u"Muttern"_s, .order = Long(2)});
    browser->setWorkgroupFilter(u"LIKE '*'"_s);
    EXPECT_EQ(browser->WorkgroupFilter(), u"LIKE '*'"_s);
    EXPECT_EQ(tree().Nodes().Count(), 1);
    browser->setWorkgroupFilter(u"IN(1)"_s);
    EXPECT_EQ(tree().Nodes().Count(), 2);
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = 42"_s);
    browser->setWorkgroupFilter(u"in(1)"_s);
    EXPECT_EQ(tree().Nodes().Count(), 2);
}

TEST_F(BrowserFrame, helpTopicsShareOneValue) {
    browser->setHelpContextIDExternal(5);
    EXPECT_EQ(browser->HelpContextID(), 5);
    browser->setHelpContextID(6);
    EXPECT_EQ(browser->HelpContextIDExternal(), 6);
    EXPECT_EQ(tree().property("HelpContextID").toInt(), 6);
}

TEST_F(BrowserFrame, theHelpFileGetsAPathAndBecomesTheApplications) {
    const QString inTheFolder = QDir::toNativeSeparators(app().Path() + u"/mklart25.chm"_s);
    EXPECT_EQ(QDir::toNativeSeparators(browser->Helpfile()), inTheFolder);
    browser->setHelpfile(u"C:\\Hilfe\\a.chm"_s);
    EXPECT_EQ(browser->Helpfile(), u"C:\\Hilfe\\a.chm"_s);
    EXPECT_EQ(app().HelpFile(), u"C:\\Hilfe\\a.chm"_s);
    browser->setHelpfile(QString());
    EXPECT_EQ(QDir::toNativeSeparators(browser->Helpfile()), inTheFolder);
}

TEST_F(BrowserFrame, constituentsBearTheirNames) {
    for (const QString& name :
         {u"TV"_s, u"LV"_s, u"LVArt"_s, u"SB"_s, u"PB"_s, u"lblStatus"_s, u"picSplitter"_s, u"picSplitterArt"_s}) {
        const auto* control = browser->findChild<QWidget*>(name);
        ASSERT_NE(control, nullptr) << name.toStdString();
        EXPECT_FALSE(control->accessibleName().isEmpty()) << name.toStdString();
    }
}

TEST_F(BrowserFrame, theListsHaveTheirColumns) {
    const auto captions = [](const ListView& list) {
        QStringList texts;
        for (const Ref<ColumnHeader>& column : list.ColumnHeaders())
            texts.append(column->Text());
        return texts;
    };
    EXPECT_EQ(captions(*browser->ArticleListView()), (QStringList{u"Pos"_s, u"Art-Nr."_s, u"Artikelname"_s}));
    EXPECT_EQ(captions(*browser->ArticlePoolListView()), (QStringList{u"Art-Nr."_s, u"Artikelname"_s}));
    EXPECT_TRUE(browser->ArticleListView()->MultiSelect());
}

TEST_F(BrowserFrame, columnsFitTheLongestNumberAndFillTheirPane) {
    const ListView& pool = *browser->ArticlePoolListView();
    const ListView& list = *browser->ArticleListView();
    const Single before = pool.ColumnHeaders().Item(1)->Width();
    EXPECT_EQ(before, 16 * screen().TwipsPerPixelX() + browser->TextWidth(u"Art-Nr."_s));
    catalogue.addArticle(4711, u"Linse"_s);
    browser->Populate();
    const Single number = 16 * screen().TwipsPerPixelX() + browser->TextWidth(u"00000"_s) + 100;
    EXPECT_EQ(pool.ColumnHeaders().Item(1)->Width(), number);
    EXPECT_EQ(list.ColumnHeaders().Item(2)->Width(), number);
    EXPECT_EQ(list.ColumnHeaders().Item(1)->Width(),
              16 * screen().TwipsPerPixelX() + browser->TextWidth(u"000"_s) + 100);
    const auto unused = [](const ListView& view) {
        Single rest = Width(view);
        for (const Ref<ColumnHeader>& column : view.ColumnHeaders())
            rest -= column->Width();
        return rest;
    };
    const Single reserve = unused(pool);
    EXPECT_GT(reserve, 100);
    browser->resize(1200, 500);
    EXPECT_FLOAT_EQ(unused(pool), reserve);
    EXPECT_FLOAT_EQ(unused(list), reserve);
}

TEST_F(BrowserFrame, anEmptyCatalogueHasTheShortestNumbers) {
    browser->Populate();
    EXPECT_EQ(browser->ArticlePoolListView()->ColumnHeaders().Item(1)->Width(),
              16 * screen().TwipsPerPixelX() + browser->TextWidth(u"00"_s) + 100);
}

TEST_F(BrowserFrame, theHostsDatabaseStaysOpenBehindTheControl) {
    browser->Populate();
    browser.reset();
    EXPECT_TRUE(catalogue.database()->isOpen());
    EXPECT_EQ(errorOf([&] { catalogue.addSender(8); }), 0);
}
