// What tree and list have in common: typed letters, the menu key, the text of an empty control, what is told to
// assistive tools.
#include "controls/CatalogueImages.h"
#include "controls/ImageList.h"
#include "controls/ListView.h"
#include "controls/ToolTip.h"
#include "controls/TreeFixture.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

void type(QWidget& widget, const QString& letters) {
    for (const QChar letter : letters) {
        QKeyEvent press(QEvent::KeyPress, letter == u' ' ? Qt::Key_Space : Qt::Key_unknown, {}, letter);
        QApplication::sendEvent(&widget, &press);
    }
}

class Typing : public TreeFixture {
protected:
    Typing() {
        QApplication::setKeyboardInputInterval(60000);
        tree.setNameOf([](const Item& item) { return item.Text().sliced(6); });
    }
    ~Typing() override { QApplication::setKeyboardInputInterval(formerInterval_); }

    void fillNames(const QStringList& names) {
        for (const QString& name : names)
            add({}, name);
        show();
    }
    QString selected() const { return tree.SelectedItem() ? tree.SelectedItem()->Key() : QString(); }
    /// What letters select, each word typed after a pause.
    QString after(const QString& letters) {
        QApplication::setKeyboardInputInterval(0);
        type(tree, letters.left(1));
        QApplication::setKeyboardInputInterval(60000);
        type(tree, letters.mid(1));
        return selected();
    }

private:
    const int formerInterval_ = QApplication::keyboardInputInterval();
};

class ListTyping : public ::testing::Test {
protected:
    ListTyping() {
        QApplication::setKeyboardInputInterval(60000);
        list.resize(300, 200);
        list.ColumnHeaders().Add(u"Pos"_s, 900);
        list.ColumnHeaders().Add(u"Artikelname"_s, 3000);
        list.setNameOf([](const Item& item) { return static_cast<const ListItem&>(item).SubItems(1); });
        QObject::connect(&list, &ListView::ItemClick, [this](ListItem* item) { clicks << item->SubItems(1); });
        for (const QString& name : {u"Zange"_s, u"Öl"_s, u"rote Farbe"_s, u"rote Schraube"_s})
            list.ListItems().Add({}, {}, u"001"_s)->setSubItems(1, name);
        list.show();
        QApplication::processEvents();
    }
    ~ListTyping() override { QApplication::setKeyboardInputInterval(formerInterval_); }

    ListView list;
    QStringList clicks;

private:
    const int formerInterval_ = QApplication::keyboardInputInterval();
};

} // namespace

TEST_F(Typing, LettersFindTheNameBehindTheNumber) {
    fillNames({u"Amboss"_s, u"Schrauben"_s, u"Scheren"_s});
    EXPECT_EQ(after(u"sch"_s), u"Schrauben"_s);
    EXPECT_EQ(after(u"sche"_s), u"Scheren"_s);
    EXPECT_EQ(after(u"0"_s), u"Scheren"_s);
    EXPECT_EQ(log, (QStringList{u"NodeClick Schrauben"_s, u"NodeClick Scheren"_s}));
}

TEST_F(Typing, TheSameLetterStepsOnAndAround) {
    fillNames({u"Säge"_s, u"Amboss"_s, u"Schere"_s});
    EXPECT_EQ(after(u"s"_s), u"Säge"_s);
    type(tree, u"s"_s);
    EXPECT_EQ(selected(), u"Schere"_s);
    type(tree, u"S"_s);
    EXPECT_EQ(selected(), u"Säge"_s);
    EXPECT_EQ(after(u"s"_s), u"Schere"_s); // a new search begins behind the selected one
    EXPECT_EQ(after(u"a"_s), u"Amboss"_s);
    EXPECT_EQ(after(u"a"_s), u"Amboss"_s); // the only one
}

TEST_F(Typing, FurtherLettersMayStayWhereTheyAre) {
    fillNames({u"Sand"_s, u"Schere"_s, u"Schraube"_s});
    EXPECT_EQ(after(u"sc"_s), u"Schere"_s);
    type(tree, u"h"_s);
    EXPECT_EQ(selected(), u"Schere"_s);
    type(tree, u"r"_s);
    EXPECT_EQ(selected(), u"Schraube"_s);
}

TEST_F(Typing, AWordEndsWithThePause) {
    fillNames({u"Amboss"_s, u"Sand"_s, u"Kelle"_s});
    EXPECT_EQ(after(u"s"_s), u"Sand"_s);
    QApplication::setKeyboardInputInterval(0);
    type(tree, u"k"_s);
    EXPECT_EQ(selected(), u"Kelle"_s);
}

TEST_F(Typing, Umlauts) {
    fillNames({u"Oel"_s, u"Öl"_s, u"Ähre"_s});
    EXPECT_EQ(after(u"ö"_s), u"Öl"_s);
    EXPECT_EQ(after(u"Ä"_s), u"Ähre"_s);
    EXPECT_EQ(after(u"äHR"_s), u"Ähre"_s);
}

TEST_F(Typing, OnlyNodesInSight) {
    fill(); // roots a and b; below a: a1 with a11, and a2
    show();
    EXPECT_EQ(after(u"a1"_s), u"a"_s); // a1 is hidden
    node(u"a"_s)->setExpanded(true);
    EXPECT_EQ(after(u"a1"_s), u"a1"_s);
    EXPECT_EQ(after(u"a11"_s), u"a1"_s);
    EXPECT_EQ(after(u"b"_s), u"b"_s);
    EXPECT_EQ(after(u"a2"_s), u"a2"_s); // round the end
}

TEST_F(Typing, NothingFitsOrNothingIsThere) {
    type(tree, u"x"_s);
    fillNames({u"Amboss"_s});
    EXPECT_EQ(after(u"x"_s), QString());
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(Typing, WithoutAHookTheWholeTextCounts) {
    fillNames({u"Amboss"_s});
    tree.setNameOf({});
    EXPECT_EQ(after(u"amb"_s), QString());
    EXPECT_EQ(after(u"001 - a"_s), u"Amboss"_s);
}

TEST_F(ListTyping, LettersFindTheNameAndSelectIt) {
    for (const bool several : {false, true}) {
        list.setMultiSelect(several);
        list.setSelectedItem(list.ListItems().Item(1));
        clicks.clear();
        QApplication::setKeyboardInputInterval(0);
        type(list, u"ö"_s);
        EXPECT_EQ(clicks, QStringList{u"Öl"_s});
        EXPECT_TRUE(list.ListItems().Item(2)->Selected());
        EXPECT_EQ(list.SelectedCount(), 1);
        QApplication::setKeyboardInputInterval(60000);
    }
}

TEST_F(ListTyping, ABlankWithinAWordBelongsToIt) {
    list.setMultiSelect(true);
    type(list, u"rote s"_s);
    EXPECT_EQ(list.SelectedItem()->SubItems(1), u"rote Schraube"_s);
    EXPECT_EQ(list.SelectedCount(), 1);
}

TEST_F(TreeFixture, TheMenuKeyTellsThePlaceOfTheSelectedRow) {
    fill();
    show();
    QStringList places;
    QObject::connect(&tree, &ItemView::MenuKey, [&](Single x, Single y) {
        const Ref<Node> hit = tree.HitTest(x + 15, y);
        places << (hit ? hit->Key() : u"-"_s);
    });
    tree.setSelectedItem(node(u"b"_s));
    QTest::keyClick(&tree, Qt::Key_Menu);
    tree.setSelectedItem(node(u"a2"_s));
    QTest::keyClick(&tree, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(places, (QStringList{u"b"_s, u"a2"_s}));
    QTest::keyClick(&tree, Qt::Key_F10);
    // What some platforms send behind the key.
    QContextMenuEvent second(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1), Qt::NoModifier);
    QApplication::sendEvent(&tree, &second);
    EXPECT_EQ(places.size(), 2);
}

TEST_F(TreeFixture, TheMenuKeyBringsTheRowIntoView) {
    for (int number = 0; number < 200; ++number)
        add({}, QString::number(number));
    show();
    tree.setSelectedItem(node(u"199"_s));
    tree.scrollToTop();
    Single place = -1;
    QObject::connect(&tree, &ItemView::MenuKey, [&](Single, Single y) { place = y; });
    QTest::keyClick(&tree, Qt::Key_Menu);
    ASSERT_TRUE(tree.HitTest(300, place));
    EXPECT_EQ(tree.HitTest(300, place)->Key(), u"199"_s);
}

TEST_F(TreeFixture, ScrolledToTheTop) {
    EXPECT_EQ(tree.keysInSight(), QStringList());
    for (int number = 0; number < 200; ++number)
        add({}, QString::number(number));
    add(u"40"_s, u"40a"_s);
    show();
    EXPECT_EQ(tree.keysInSight().first(2), (QStringList{u"0"_s, u"1"_s}));
    node(u"40"_s)->setExpanded(true);
    tree.setTopItem(*node(u"40"_s));
    EXPECT_EQ(tree.keysInSight().first(3), (QStringList{u"40"_s, u"40a"_s, u"41"_s}));
    const qsizetype rows = tree.keysInSight().size();
    EXPECT_GT(rows, 5);
    EXPECT_LT(rows, 60);
    tree.setTopItem(*node(u"199"_s)); // nothing stands behind it
    EXPECT_EQ(tree.keysInSight().last(), u"199"_s);
}

TEST_F(TreeFixture, ScrolledToTheTopWhenItShowsLater) {
    for (int number = 0; number < 200; ++number)
        add({}, QString::number(number));
    tree.setTopItem(*node(u"40"_s));
    show();
    EXPECT_EQ(tree.keysInSight().first(), u"40"_s);
    tree.hide(); // and without any change of the nodes
    tree.setTopItem(*node(u"90"_s));
    show();
    EXPECT_EQ(tree.keysInSight().first(), u"90"_s);
    tree.hide(); // what is to be in view comes after
    node(u"50"_s)->EnsureVisible();
    tree.setTopItem(*node(u"120"_s));
    show();
    EXPECT_EQ(tree.keysInSight().first(), u"50"_s);
    tree.hide();
    tree.setTopItem(*node(u"120"_s));
    tree.Nodes().Clear();
    show();
    EXPECT_EQ(tree.keysInSight(), QStringList());
}

TEST_F(TreeFixture, TheMenuKeyOfAnEmptyControl) {
    show();
    QStringList places;
    QObject::connect(&tree, &ItemView::MenuKey, [&](Single x, Single y) { places << u"%1 %2"_s.arg(x).arg(y); });
    QTest::keyClick(&tree, Qt::Key_Menu);
    EXPECT_EQ(places, QStringList{u"0 0"_s});
}

TEST_F(TreeFixture, AnEmptyControlSaysSo) {
    show();
    const QImage silent = tree.viewport()->grab().toImage();
    tree.setEmptyText(u"Keine Kategorien."_s);
    const QImage speaking = tree.viewport()->grab().toImage();
    EXPECT_NE(silent, speaking);
    EXPECT_EQ(tree.accessibleDescription(), u"Keine Kategorien."_s);
    EXPECT_EQ(tree.Nodes().Count(), 0);
    add({}, u"a"_s);
    EXPECT_EQ(tree.accessibleDescription(), QString());
    tree.Nodes().Remove(u"a"_s);
    EXPECT_EQ(tree.accessibleDescription(), u"Keine Kategorien."_s);
    EXPECT_EQ(tree.viewport()->grab().toImage(), speaking);
    tree.hide();
    add({}, u"a"_s);
    show();
    EXPECT_EQ(tree.accessibleDescription(), QString());
}

TEST_F(TreeFixture, AnInactiveNodeIsAnnounced) {
    const ImageList& images = *catalogueImages(&tree);
    tree.setImageList(&images);
    fill();
    node(u"a"_s)->setImage(u"OrdnerZuOn"_s);
    node(u"b"_s)->setImage(u"OrdnerZu2Off"_s);
    show();
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&tree);
    QAccessibleInterface* const first = spoken->child(1); // behind the hidden header
    QAccessibleInterface* const second = spoken->child(2);
    EXPECT_EQ(spoken->child(0)->text(QAccessible::Name), QString());
    EXPECT_EQ(first->text(QAccessible::Name), u"001 - a"_s);
    EXPECT_EQ(first->text(QAccessible::Description), QString());
    EXPECT_EQ(second->text(QAccessible::Name), u"001 - b, inaktiv"_s);
    EXPECT_EQ(second->text(QAccessible::Description), u"inaktiv"_s);
    node(u"b"_s)->setImage(u"OrdnerZu2On"_s);
    EXPECT_EQ(second->text(QAccessible::Name), u"001 - b"_s);
}

TEST_F(ListTyping, AnInactiveRowIsAnnouncedAndSelectionIsAState) {
    const ImageList& images = *catalogueImages(&list);
    list.setSmallIcons(&images);
    list.setMultiSelect(true);
    list.ListItems().Item(1)->setSmallIcon(u"On"_s);
    list.ListItems().Item(2)->setSmallIcon(u"Off"_s);
    list.ListItems().Item(2)->setSelected(true);
    QAccessibleTableInterface* const table = QAccessible::queryAccessibleInterface(&list)->tableInterface();
    EXPECT_EQ(table->cellAt(0, 0)->text(QAccessible::Name), u"001"_s);
    EXPECT_EQ(table->cellAt(1, 0)->text(QAccessible::Name), u"001, inaktiv"_s);
    EXPECT_EQ(table->cellAt(1, 1)->text(QAccessible::Name), u"Öl"_s);
    EXPECT_EQ(table->cellAt(1, 1)->text(QAccessible::Description), u"inaktiv"_s);
    EXPECT_TRUE(table->cellAt(1, 0)->state().selected);
    EXPECT_FALSE(table->cellAt(0, 0)->state().selected);
}

TEST_F(ListTyping, ALongNameHasAToolTip) {
    list.ListItems().Item(1)->setSubItems(1, QString(80, u'W'));
    EXPECT_EQ(list.textElideMode(), Qt::ElideRight);
    const auto toolTipOf = [this](int row) {
        const QPoint at = list.visualRect(list.model()->index(row, 1)).center();
        QHelpEvent help(QEvent::ToolTip, at, list.viewport()->mapToGlobal(at));
        QApplication::sendEvent(list.viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(toolTipOf(1), QString());
    EXPECT_EQ(toolTipOf(0), plainToolTip(QString(80, u'W')));
}

} // namespace mkl
