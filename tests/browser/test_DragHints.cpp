#include "browser/DragHints.h"

#include "browser/DragHost.h"

using namespace mkl;

namespace {

class DragHintsTest : public DragHost {
protected:
    DragHintsTest()
        : DragHost(dragCatalogue) {
        catalogue.addArticle(99, u"Zange"_s);
        browser->setSpringOpenInterval(600000); // a test does not wait
        show(41);
    }

    IntervalTimer& spring() const { return *browser->findChild<IntervalTimer*>(u"SpringTimer"_s); }
    QString line() const { return constituent<StatusBar>(u"SB"_s).Overlay(); }
    static QString noDrop() { return u"Hier ist kein Ablegen möglich"_s; }

    void drag(Long category, Qt::KeyboardModifiers modifiers = {}) {
        press(category, modifiers);
        wait();
    }
    void drag(ListView& list, Long row, Qt::KeyboardModifiers modifiers = {}) {
        press(list, row, modifiers);
        wait();
    }
};

} // namespace

TEST_F(DragHintsTest, aClosedNodeOpensUnderTheMouse) {
    drag(pool(), 1);
    EXPECT_FALSE(spring().Enabled());
    over(60); // without children
    EXPECT_FALSE(spring().Enabled());
    over(41);
    EXPECT_EQ(spring().Interval(), 600000);
    EXPECT_TRUE(spring().Enabled());
    EXPECT_FALSE(node(41)->Expanded());
    spring().tick();
    EXPECT_TRUE(node(41)->Expanded());
    EXPECT_FALSE(spring().Enabled());
    over(411);
    EXPECT_TRUE(spring().Enabled());
    over(50); // it did not rest
    EXPECT_FALSE(spring().Enabled());
    over(411);
    spring().tick();
    EXPECT_TRUE(node(411)->Expanded());
    over(4111);
    over(41); // open as it is
    EXPECT_FALSE(spring().Enabled());
}

TEST_F(DragHintsTest, restingCountsFromTheFirstMoveOnTheNode) {
    drag(pool(), 1);
    const QPoint place = WindowMouse::placeOf(tree(), node(41));
    WindowMouse::moveTo(tree(), place);
    int restarts = 0;
    QObject::connect(&spring(), &IntervalTimer::Timer, [&] { ++restarts; });
    spring().setInterval(20); // a move on the same node that began it anew would bring the long one back
    WindowMouse::moveTo(tree(), place + QPoint(3, 0));
    EXPECT_EQ(spring().Interval(), 20);
    EXPECT_TRUE(QTest::qWaitFor([&] { return restarts == 1; }));
    EXPECT_TRUE(node(41)->Expanded());
}

TEST_F(DragHintsTest, nothingOpensOutsideOfTheTreeOrAfterTheDrag) {
    drag(pool(), 1);
    over(41);
    over(list(), 1);
    EXPECT_FALSE(spring().Enabled());
    over(41);
    QTest::keyClick(browser->windowHandle(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_FALSE(spring().Enabled());
    EXPECT_FALSE(node(41)->Expanded());
    EXPECT_EQ(line(), QString());
}

TEST_F(DragHintsTest, aNodeThatHasGoneDoesNotOpen) {
    drag(pool(), 1);
    over(41);
    const Ref<Node> gone = node(41);
    browser->RefreshPane(acbPaneCategoryTree);
    spring().tick();
    EXPECT_FALSE(gone->Expanded());
    EXPECT_FALSE(node(41)->Expanded());
}

TEST_F(DragHintsTest, offUnlessSet) {
    EXPECT_EQ(ArtCatBrowser().springOpenInterval(), 0);
    browser->setSpringOpenInterval(-5);
    EXPECT_EQ(browser->springOpenInterval(), 0);
    drag(pool(), 1);
    over(41);
    EXPECT_FALSE(spring().Enabled());
    EXPECT_EQ(line(), QString());
}

TEST_F(DragHintsTest, theLineOfADragFromThePool) {
    drag(pool(), 1);
    EXPECT_EQ(line(), noDrop());
    over(50);
    EXPECT_EQ(line(), u"Einfügen in Kategorie 'Werkzeug'"_s);
    over(list(), 3);
    EXPECT_EQ(line(), u"Einfügen in Kategorie 'Schrauben' an Position 3"_s);
    overFreeArea(list()); // as the first row
    EXPECT_EQ(line(), u"Einfügen in Kategorie 'Schrauben' an Position 1"_s);
    over(pool(), 2);
    EXPECT_EQ(line(), noDrop());
    overFreeArea(tree());
    EXPECT_EQ(line(), noDrop());
    over(60);
    WindowMouse::moveTo(constituent<StatusBar>(u"SB"_s), {5, 5});
    EXPECT_EQ(line(), noDrop());
}

TEST_F(DragHintsTest, theLineOverAnEmptyList) {
    show(60);
    drag(pool(), 1);
    overFreeArea(list());
    EXPECT_EQ(line(), u"Einfügen in Kategorie 'Leer'"_s);
}

TEST_F(DragHintsTest, theLineOfADragFromTheList) {
    drag(list(), 2);
    EXPECT_EQ(line(), noDrop()); // on itself
    over(list(), 3);
    EXPECT_EQ(line(), u"Position 2 auf Position 3 ablegen"_s);
    over(50);
    EXPECT_EQ(line(), u"Verschieben nach 'Werkzeug'"_s);
    over(41); // where they are
    EXPECT_EQ(line(), noDrop());
    dropOnFreeArea(tree());
    drag(list(), 2, Qt::ControlModifier);
    over(list(), 3);
    EXPECT_EQ(line(), noDrop());
    over(50);
    EXPECT_EQ(line(), u"Kopieren nach 'Werkzeug'"_s);
}

TEST_F(DragHintsTest, theLineOfADragFromTheTree) {
    node(41)->setExpanded(true);
    node(411)->setExpanded(true);
    drag(411);
    EXPECT_EQ(line(), noDrop());
    over(50);
    EXPECT_EQ(line(), u"Ablegen auf Kategorie 'Werkzeug'"_s);
    over(41); // its parent
    EXPECT_EQ(line(), noDrop());
    over(4111); // below itself
    EXPECT_EQ(line(), noDrop());
    over(list(), 1);
    EXPECT_EQ(line(), noDrop());
    dropOnFreeArea(list());
    drag(411, Qt::ControlModifier);
    over(60);
    EXPECT_EQ(line(), u"Kopieren nach 'Leer'"_s);
}

TEST_F(DragHintsTest, theLineIsGoneBeforeTheDialogOfTheDrop) {
    QString during = u"?"_s;
    forms.answers.append([&](QDialog& dialog) {
        during = line();
        dynamic_cast<frmArticleNewPos&>(dialog).BB.click(8);
    });
    const QString panel = treePanel();
    drag(pool(), 1);
    over(60);
    EXPECT_EQ(treePanel(), panel); // the panels keep their texts
    dropOn(60);
    EXPECT_EQ(during, QString());
    EXPECT_EQ(line(), QString());
}
