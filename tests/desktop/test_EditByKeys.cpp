// A user who edits a catalogue by keys alone, with the program's real dialogs.
#include "desktop/EditingWindow.h"

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

using EditByKeys = EditingWindow;

TEST_F(EditByKeys, Categories) {
    selectCategory(category(83));
    pressAndAnswer(u"Insert"_s, [] {
        type(u"Pflanzen"_s);
        keepPicture(u"keys-new-category"_s);
        press(u"alt+o"_s);
    });
    EXPECT_EQ(roots(), u"13 83 10 17"_s);
    EXPECT_EQ(ofCategory(10, u"Kategoriename"_s), u"Pflanzen"_s);
    EXPECT_EQ(ofCategory(10, u"Absender-Schlüssel"_s), u"3"_s);
    EXPECT_EQ(tree_->SelectedItem(), category(10));

    pressAndAnswer(u"F2"_s, [] {
        type(u"Blumen"_s); // over the present name, which is selected
        keepPicture(u"keys-rename"_s);
        press(u"Return"_s);
    });
    EXPECT_EQ(ofCategory(10, u"Kategoriename"_s), u"Blumen"_s);

    press(u"alt+Down"_s);
    expectSoon([&] { return roots(); }, u"13 83 17 10"_s);
    EXPECT_EQ(tree_->SelectedItem(), category(10));
    press(u"alt+Up"_s);
    expectSoon([&] { return roots(); }, u"13 83 10 17"_s);

    pressAndAnswer(u"Delete"_s, [] {
        keepPicture(u"keys-delete-question"_s);
        press(u"alt+n"_s);
    });
    EXPECT_EQ(roots(), u"13 83 10 17"_s);
    pressAndAnswer(u"Delete"_s, [] { press(u"alt+j"_s); });
    EXPECT_EQ(roots(), u"13 83 17"_s);
    EXPECT_EQ(tree_->SelectedItem(), category(83));
    EXPECT_TRUE(tree_->hasFocus());
}

TEST_F(EditByKeys, ArticlesOfACategory) {
    selectCategory(category(17));
    ASSERT_EQ(articlesOf(17), u"44@1 45@2 100@3 40@4"_s);
    clickRow(list(), 1);
    press(u"alt+Down"_s);
    expectSoon([&] { return articlesOf(17); }, u"45@1 44@2 100@3 40@4"_s);
    pressAndAnswer(u"F2"_s, [] {
        press(u"4"_s);
        keepPicture(u"keys-position"_s);
        press(u"alt+o"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"45@1 100@2 40@3 44@4"_s);
    pressAndAnswer(u"Delete"_s, [] {
        keepPicture(u"keys-take-out-question"_s);
        press(u"alt+j"_s);
    });
    expectSoon([&] { return articlesOf(17); }, u"45@1 100@2 40@3"_s);
    keepPicture(u"keys-list-afterwards"_s);
    EXPECT_EQ(list().ListItems().Count(), 3);
}

TEST_F(EditByKeys, ArticlesOfThePoolGoIntoTheCategory) {
    selectCategory(category(17));
    const Long first = pool().ListItems().Item(1)->Tag().toLong();
    const Long second = pool().ListItems().Item(2)->Tag().toLong();
    clickRow(pool(), 1);
    press(u"shift+Down"_s);
    ASSERT_TRUE(waitUntil([&] { return pool().SelectedCount() == 2; }));
    pressAndAnswer(u"Insert"_s, [] {
        keepPicture(u"keys-add-articles"_s);
        press(u"Return"_s);
    });
    const QString added = u"%1@1 %2@2 "_s.arg(first).arg(second); // where the form proposes
    expectSoon([&] { return articlesOf(17); }, added + u"44@3 45@4 100@5 40@6"_s);
    EXPECT_EQ(list().ListItems().Count(), 6);
}

TEST_F(EditByKeys, TheReplicaDigitOfTheCatalogue) {
    press(u"alt+x"_s);
    ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    keepPicture(u"options-menu"_s);
    pressAndAnswer(u"a"_s, [] {
        press(u"alt+z"_s);
        press(u"5"_s);
        keepPicture(u"options"_s);
        press(u"alt+o"_s);
    });
    EXPECT_EQ(reader_->LocalNumber(), 5);
    selectCategory(category(17));
    pressAndAnswer(u"Insert"_s, [] {
        type(u"Tische"_s);
        press(u"alt+o"_s);
    });
    EXPECT_EQ(ofCategory(15, u"Kategoriename"_s), u"Tische"_s);
}

} // namespace
