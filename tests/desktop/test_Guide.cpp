// The user guide as a user goes through it: a catalogue is built from nothing. Its pictures are made on the way;
// scripts/guide-pictures puts them into the guide.
#include "desktop/MenuWindow.h"

#include <QAbstractButton>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

class Guide : public MenuWindow {
protected:
    // The articles of the garden shop, without any category.
    void SetUp() override {
        window_.resize(900, 520);
        MenuWindow::SetUp();
        reader_->executeNative(u"DELETE FROM ARTKAT"_s);
        reader_->executeNative(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
        ASSERT_TRUE(window_.showFile(folder_.path(u"Garten.sqlite"_s)));
        tree_ = browser().CategoryTreeView();
        ASSERT_EQ(tree_->Nodes().Count(), 0);
    }

    void keep(const QString& name) const { keepPicture(u"guide-"_s + name, window_.frameGeometry()); }
    /// The new category's form is filled in and looked at before it is confirmed.
    void makeCategory(const QString& name, bool below = false, const QString& picture = {}) {
        const Long before = tree_->Nodes().Count();
        doAndAnswer([] { pressInMenu({u"n"_s}); }, {[&] {
                        type(name);
                        const auto* const field = dialog()->findChild<QLineEdit*>(u"txtCatName"_s);
                        EXPECT_TRUE(waitUntil([&] { return field->text() == name; }));
                        if (below) chooseBelow();
                        if (!picture.isEmpty()) keep(picture);
                        press(u"alt+o"_s);
                    }});
        ASSERT_TRUE(waitUntil([&] { return tree_->Nodes().Count() == before + 1; }));
        ASSERT_TRUE(tree_->SelectedItem() && tree_->SelectedItem()->Text().endsWith(name));
    }
    static void chooseBelow() {
        const auto* const option = dialog()->findChild<QAbstractButton*>(u"Opt3"_s);
        click(option->mapToGlobal(QPoint(8, option->height() / 2)));
        EXPECT_TRUE(waitUntil([&] { return option->isChecked(); }));
    }
    Ref<Node> named(const QString& name) const {
        for (const Ref<Node>& node : tree_->Nodes())
            if (node->Text().endsWith(name)) return node;
        return nullptr;
    }
    /// The names of the articles in the list, in their order.
    QStringList listed() const {
        QStringList names;
        for (const Ref<ListItem>& row : list().ListItems())
            names += row->SubItems(2);
        return names;
    }
};

} // namespace

TEST_F(Guide, ACatalogueIsBuilt) {
    keep(u"empty"_s);
    openAt(belowRows(*tree_), u"KTV"_s);
    makeCategory(u"Schneiden"_s);
    openBy(u"Menu"_s, u"KTV"_s);
    makeCategory(u"Wasser im Garten"_s);
    openBy(u"Menu"_s, u"KTV"_s);
    makeCategory(u"Regner"_s, true);
    openBy(u"Menu"_s, u"KTV"_s);
    makeCategory(u"Kannen und Tonnen"_s, false, u"new-category"_s);
    ASSERT_TRUE(named(u"Kannen und Tonnen"_s) && named(u"Wasser im Garten"_s));
    EXPECT_EQ(named(u"Kannen und Tonnen"_s)->Parent(), named(u"Wasser im Garten"_s));

    clickRow(pool(), 1);
    press(u"shift+Down"_s);
    press(u"shift+Down"_s);
    ASSERT_TRUE(waitUntil([&] { return pool().SelectedCount() == 3; }));
    dragFrom(rowOf(pool(), 2));
    moveTo(textOf(*named(u"Schneiden"_s)));
    ASSERT_TRUE(waitUntil([&] { return !line().isEmpty(); }));
    keep(u"drag"_s);
    releaseAndAnswer([this] {
        keep(u"position"_s);
        press(u"Return"_s);
    });
    ASSERT_TRUE(waitUntil([&] { return list().ListItems().Count() == 3; }));
    const QStringList before = listed();

    dragFrom(rowOf(list(), 3));
    moveTo(rowOf(list(), 1));
    releaseAndAnswer([this] {
        keep(u"order"_s);
        press(u"alt+o"_s);
    });
    ASSERT_TRUE(waitUntil([&] { return listed() == QStringList({before[2], before[0], before[1]}); }));

    openAt(textOf(*named(u"Schneiden"_s)), u"KTV"_s);
    keep(u"menu"_s);
    closeMenu();
    openAt(rowOf(pool(), 4), u"KLVArt"_s);
    press(u"f"_s);
    ASSERT_TRUE(waitUntil([] { return states().contains(u"KLVArt_UnCategorized"_s); }));
    keep(u"filter"_s);
    click(menu()->mapToGlobal(menu()->actionGeometry(menu()->actions().last()).center()));
    ASSERT_TRUE(waitUntil([&] { return pool().ListItems().Count() == 36; }));

    openAt(rowOf(pool(), 1), u"KLVArt"_s);
    doAndAnswer([] { pressInMenu({u"s"_s}); }, {[] {
                                                    type(u"*schlauch*"_s);
                                                    press(u"Return"_s);
                                                },
                                                [this] {
                                                    keep(u"search"_s);
                                                    press(u"alt+a"_s);
                                                },
                                                [] { press(u"Return"_s); }});
}
