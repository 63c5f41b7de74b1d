// Real mouse and keyboard events on the tree.
#include "browser/BrowserHost.h"

#include <QTest>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

const QString forest = u"41 Schrauben\n"
                       "  42 Holzschrauben\n"
                       "    43 Edelstahl\n"
                       "  44 Blechschrauben {inaktiv}\n"
                       "50 Werkzeug\n"_s;

class TreeClicks : public BrowserHost {
protected:
    TreeClicks()
        : BrowserHost(forest) {
        browser->show();
        browser->Populate();
        QCoreApplication::processEvents();
        events.take();
    }

    QRect rowOf(Long category) const {
        const QString text = node(category)->Text();
        const QModelIndexList found = tree().model()->match(tree().model()->index(0, 0), Qt::DisplayRole, text, 1,
                                                            Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? QRect() : tree().visualRect(found.first());
    }
    void click(Long category) const {
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, rowOf(category).center());
    }
};

} // namespace

TEST_F(TreeClicks, aClickSelectsTheCategoryAndTellsTheHost) {
    click(50);
    EXPECT_EQ(tree().SelectedItem(), node(50));
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(50, 2)"_s, u"ItemClick(A-50, 50, 2)"_s}));
}

TEST_F(TreeClicks, aSecondClickOnTheSameNodeRaisesNothing) {
    click(50);
    events.take();
    click(50);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(TreeClicks, keysMoveTheSelection) {
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Down);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(50, 2)"_s, u"ItemClick(A-50, 50, 2)"_s}));
    QTest::keyClick(&tree(), Qt::Key_Up);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(41, 2)"_s, u"ItemClick(A-41, 41, 2)"_s}));
}

TEST_F(TreeClicks, expandAndCollapseByKeySwitchTheFolder) {
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Right);
    EXPECT_TRUE(node(41)->Expanded());
    EXPECT_EQ(node(41)->Image(), u"OrdnerAufOn"_s);
    QTest::keyClick(&tree(), Qt::Key_Left);
    EXPECT_FALSE(node(41)->Expanded());
    EXPECT_EQ(node(41)->Image(), u"OrdnerZuOn"_s);
}

TEST_F(TreeClicks, aDoubleClickSwitchesTheFolder) {
    click(41);
    QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, rowOf(41).center());
    EXPECT_TRUE(node(41)->Expanded());
    EXPECT_EQ(node(41)->Image(), u"OrdnerAufOn"_s);
}

TEST_F(TreeClicks, aClickOnTheSignBeforeTheNodeSwitchesTheFolder) {
    const QRect row = rowOf(41);
    const QPoint sign(row.left() - tree().indentation() / 2, row.center().y());
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, sign);
    EXPECT_EQ(node(41)->Image(), u"OrdnerAufOn"_s);
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, sign);
    EXPECT_EQ(node(41)->Image(), u"OrdnerZuOn"_s);
}

TEST_F(TreeClicks, theFolderKeepsTheNodesOwnState) {
    catalogue.addCategory({.key = 45, .name = u"Kind"_s, .parent = 44});
    browser->Populate();
    node(41)->setExpanded(true);
    node(44)->setExpanded(true);
    EXPECT_EQ(node(44)->Image(), u"OrdnerAufOff"_s);
    node(44)->setExpanded(false);
    EXPECT_EQ(node(44)->Image(), u"OrdnerZuOff"_s);
}

TEST_F(TreeClicks, anImageThatEndsInNeitherStateIsInactive) {
    node(41)->setImage(u"OrdnerZu"_s);
    node(41)->setExpanded(true);
    EXPECT_EQ(node(41)->Image(), u"OrdnerAufOff"_s);
}

TEST_F(TreeClicks, aNewIconSetShowsOnExpansion) {
    browser->setImageset(acbImageset2);
    node(41)->setExpanded(true);
    EXPECT_EQ(node(41)->Image(), u"OrdnerAuf2On"_s);
    EXPECT_EQ(node(42)->Image(), u"OrdnerZuOn"_s);
}

TEST_F(TreeClicks, collapsingAnAncestorSelectsIt) {
    node(41)->setExpanded(true);
    node(42)->setExpanded(true);
    QCoreApplication::processEvents();
    click(43);
    events.take();
    node(41)->setExpanded(false);
    EXPECT_EQ(tree().SelectedItem(), node(41));
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 41);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(41, 2)"_s, u"ItemClick(A-41, 41, 2)"_s}));
}

TEST_F(TreeClicks, collapsingANodeBesideTheSelectionRaisesNothing) {
    node(41)->setExpanded(true);
    click(50);
    events.take();
    node(41)->setExpanded(false);
    EXPECT_EQ(tree().SelectedItem(), node(50));
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(TreeClicks, aCollapseWithTheSelectedNodeClickedLastOnlyChecksItsTag) {
    node(41)->setExpanded(true);
    node(41)->setTag(4100); // a host's doing
    node(41)->setExpanded(false);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 4100);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(4100, 2)"_s}));
}

TEST_F(TreeClicks, aCollapseWithoutSelectionClearsTheCategory) {
    node(41)->setExpanded(true);
    tree().setSelectedItem({});
    node(41)->setExpanded(false);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 0);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(TreeClicks, itemClickIsSuppressedForTheKeyReportedLast) {
    click(50);
    events.take();
    browser->Populate(); // selects 50 again by itself
    click(50);
    EXPECT_EQ(events.take(), QStringList());
    click(41);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(41, 2)"_s, u"ItemClick(A-41, 41, 2)"_s}));
}

TEST_F(TreeClicks, theSelectedNodeIsInViewAfterARead) {
    for (Long key = 100; key < 400; ++key)
        catalogue.addCategory({.key = key, .name = u"viele"_s, .order = key});
    browser->Populate();
    Q_EMIT tree().NodeClick(node(399).get());
    browser->Populate();
    QCoreApplication::processEvents();
    EXPECT_TRUE(tree().viewport()->rect().intersects(rowOf(399)));
}

TEST_F(TreeClicks, aHandlerMayReadTheTreeAnew) {
    bool once = true;
    QObject::connect(browser.get(), &ArtCatBrowser::ItemSelected, browser.get(), [&] {
        if (std::exchange(once, false)) browser->setWorkgroupFilter(u"IN(1,2)"_s);
    });
    click(50);
    EXPECT_EQ(tree().Nodes().Count(), 5);
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), 50);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(50, 2)"_s, u"ItemClick(A-50, 50, 2)"_s}));
}
