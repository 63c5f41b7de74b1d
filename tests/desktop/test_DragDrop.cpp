// Every kind of drag with the real mouse, its dialog answered by real keys, its rows read by another program.
#include "desktop/DragWindow.h"

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

class DragDropByMouse : public DragWindow {};

TEST_F(DragDropByMouse, PoolToACategory) {
    const QString first = pool().ListItems().Item(1)->Tag().toText(),
                  second = pool().ListItems().Item(2)->Tag().toText();
    selectCategory(category(13));
    clickRow(pool(), 1);
    xdotool(QStringList{u"keydown"_s, u"shift"_s} + toPoint(rowOf(pool(), 2))
            << u"click"_s << u"1"_s << u"keyup"_s << u"shift"_s);
    ASSERT_TRUE(waitUntil([&] { return pool().SelectedCount() == 2; }));
    dragFrom(rowOf(pool(), 2));
    expectIcon(u"ImageNoDrop"_s, u"drag-no-drop"_s);
    moveTo(nodeAt(17));
    expectIcon(u"ImageCopyArticle"_s, u"drag-copy-article"_s);
    EXPECT_EQ(tree_->DropHighlight(), category(17));
    EXPECT_EQ(line(), u"Einfügen in Kategorie 'Möbel'"_s);
    EXPECT_EQ(pool().SelectedCount(), 2);
    releaseAndAnswer([&] {
        keepPicture(u"drag-pool-to-category"_s);
        press(u"Return"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"%1@1 %2@2 44@3 45@4 100@5 40@6"_s.arg(first, second));
    EXPECT_EQ(tree_->SelectedItem(), category(17));
    EXPECT_EQ(list().ListItems().Count(), 6);
    expectNothing();
}

TEST_F(DragDropByMouse, PoolToARowOfTheList) {
    const QString first = pool().ListItems().Item(1)->Tag().toText();
    selectCategory(category(17));
    dragFrom(rowOf(pool(), 1));
    moveTo(rowOf(list(), 3));
    expectIcon(u"ImageCopyArticle"_s);
    EXPECT_EQ(line(), u"Einfügen in Kategorie 'Möbel' an Position 3"_s);
    releaseAndAnswer([&] {
        keepPicture(u"drag-pool-to-row"_s);
        press(u"Return"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"44@1 45@2 %1@3 100@4 40@5"_s.arg(first));
    expectNothing();
}

TEST_F(DragDropByMouse, ListToACategoryMoves) {
    selectCategory(category(17));
    dragFrom(rowOf(list(), 2));
    moveTo(nodeAt(27));
    expectIcon(u"ImageDragArticle"_s, u"drag-move-article"_s);
    EXPECT_EQ(line(), u"Verschieben nach 'Stühle - klappbar'"_s);
    releaseAndAnswer([&] {
        keepPicture(u"drag-list-to-category"_s);
        press(u"Return"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"44@1 100@2 40@3"_s);
    EXPECT_EQ(articlesOf(27), u"45@1 40@2 41@3 42@4 43@5"_s);
    EXPECT_TRUE(waitUntil([&] { return tree_->SelectedItem() == category(27); }));
    expectNothing();
}

TEST_F(DragDropByMouse, ListToACategoryWithCtrlCopiesAllSelected) {
    selectCategory(category(17));
    clickRow(list(), 1);
    xdotool(QStringList{u"keydown"_s, u"ctrl"_s} + toPoint(rowOf(list(), 3))
            << u"click"_s << u"1"_s << u"keyup"_s << u"ctrl"_s);
    ASSERT_TRUE(waitUntil([&] { return list().SelectedCount() == 2; }));
    dragFrom(rowOf(list(), 3), u"ctrl"_s); // on a row that is selected
    EXPECT_EQ(list().SelectedCount(), 2);
    moveTo(nodeAt(83));
    expectIcon(u"ImageCopyArticle"_s);
    releaseAndAnswer([&] {
        releaseKey();
        press(u"Return"_s);
    });
    expectSoon([&] { return articlesOf(83); }, u"44@1 100@2 24@3 25@4 26@5 27@6"_s);
    EXPECT_EQ(articlesOf(17), u"44@1 45@2 100@3 40@4"_s);
    expectNothing();
}

TEST_F(DragDropByMouse, ListToAnotherRow) {
    selectCategory(category(17));
    dragFrom(rowOf(list(), 1));
    expectIcon(u"ImageNoDrop"_s);
    moveTo(rowOf(list(), 3));
    expectIcon(u"ImageDragArticle"_s);
    releaseAndAnswer([&] {
        keepPicture(u"drag-row-to-row"_s);
        press(u"Up"_s); // swap
        press(u"alt+o"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"100@1 45@2 44@3 40@4"_s);
    dragFrom(rowOf(list(), 4));
    moveTo(rowOf(list(), 1));
    releaseAndAnswer([] { press(u"alt+o"_s); }); // move
    expectSoon([&] { return articlesOf(17); }, u"40@1 100@2 45@3 44@4"_s);
    dragFrom(rowOf(list(), 1));
    moveTo(rowOf(list(), 2));
    releaseAndAnswer([] { press(u"Escape"_s); });
    EXPECT_EQ(articlesOf(17), u"40@1 100@2 45@3 44@4"_s);
    expectNothing();
}

TEST_F(DragDropByMouse, CategoriesOfOneLevel) {
    dragFrom(nodeAt(13));
    expectIcon(u"ImageNoDrop"_s);
    moveTo(nodeAt(83));
    expectIcon(u"ImageDragFolder"_s, u"drag-move-folder"_s);
    EXPECT_EQ(line(), u"Ablegen auf Kategorie 'Bewässerung'"_s);
    releaseAndAnswer([&] {
        keepPicture(u"drag-category"_s);
        press(u"Up"_s); // swap
        press(u"alt+o"_s);
    });
    expectSoon([&] { return roots(); }, u"83 13 17"_s);
    dragFrom(nodeAt(17));
    moveTo(nodeAt(83));
    releaseAndAnswer([] { press(u"alt+o"_s); }); // move
    expectSoon([&] { return roots(); }, u"17 83 13"_s);
    expectNothing();
}

TEST_F(DragDropByMouse, CategoriesOfTwoLevels) {
    dragFrom(nodeAt(27));
    moveTo(nodeAt(93));
    expectIcon(u"ImageDragFolder"_s);
    releaseAndAnswer([] { press(u"alt+o"_s); }); // before the other
    expectSoon([&] { return below(83); }, u"27 93 103"_s);
    EXPECT_EQ(below(17), QString());
    ASSERT_TRUE(waitUntil([&] { return !indexOf(*category(27)).isNull(); }));
    dragFrom(nodeAt(103));
    moveTo(nodeAt(17));
    releaseAndAnswer([] {
        press(u"Down"_s); // a subcategory
        press(u"alt+o"_s);
    });
    expectSoon([&] { return below(17); }, u"103"_s);
    EXPECT_EQ(below(83), u"27 93"_s);
    expectNothing();
}

TEST_F(DragDropByMouse, ACategoryWithCtrlIsCopied) {
    const QString before = articlesOf(17);
    dragFrom(nodeAt(17), u"ctrl"_s);
    moveTo(nodeAt(83));
    expectIcon(u"ImageCopyFolder"_s, u"drag-copy-folder"_s);
    EXPECT_EQ(line(), u"Kopieren nach 'Bewässerung'"_s);
    releaseAndAnswer([&] {
        releaseKey();
        keepPicture(u"drag-copy-category-question"_s);
        press(u"alt+j"_s);
    });
    EXPECT_TRUE(waitUntil([&] { return below(83).split(u' ').size() == 3; }));
    const Long copy = below(83).split(u' ').last().toInt();
    EXPECT_EQ(ofCategory(copy, u"Kategoriename"_s), u"Möbel"_s);
    EXPECT_EQ(ofCategory(copy, u"Order"_s), u"3"_s);
    EXPECT_EQ(articlesOf(copy), before);
    EXPECT_EQ(below(copy).split(u' ').size(), 1);
    EXPECT_EQ(articlesOf(below(copy).toInt()), articlesOf(27));
    EXPECT_EQ(roots(), u"13 83 17"_s);
    expectNothing();
}

TEST_F(DragDropByMouse, ACategoryOnItsOwnDescendant) {
    const QString before = everything();
    dragFrom(nodeAt(23));
    moveTo(nodeAt(33));
    releaseAndAnswer([] {
        keepPicture(u"drag-on-descendant"_s);
        press(u"Return"_s);
    });
    EXPECT_EQ(everything(), before);
    dragFrom(nodeAt(23));
    moveTo(nodeAt(13)); // its parent: nothing
    expectIcon(u"ImageNoDrop"_s);
    release();
    expectNothing();
    EXPECT_EQ(everything(), before);
}

} // namespace
