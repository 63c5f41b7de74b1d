// What an empty pane says.
#include "browser/BrowserHost.h"

using namespace mkl;

namespace {

class PaneHints : public BrowserHost {
protected:
    PaneHints()
        : BrowserHost(u"41 Schrauben: 12 Senkkopf\n60 Leer\n"_s) {}
};

} // namespace

TEST_F(PaneHints, nothingIsSaidBeforePopulate) {
    browser->show();
    for (const ItemView* view :
         {static_cast<ItemView*>(&pool()), static_cast<ItemView*>(&tree()), static_cast<ItemView*>(&list())})
        EXPECT_EQ(view->EmptyText(), QString());
}

TEST_F(PaneHints, emptyPanesSayWhatToDo) {
    browser->show();
    browser->Populate();
    EXPECT_EQ(list().accessibleDescription(), QString());
    browser->setSelected(acbPaneCategoryTree, 60);
    EXPECT_TRUE(list().accessibleDescription().contains(u"Kategorie"_s));
    EXPECT_EQ(list().ListItems().Count(), 0);
    browser->setFilter(acbPaneArticlePool, u"[Artikel-Schlüssel]=0"_s);
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_TRUE(pool().accessibleDescription().contains(u"Filter"_s));
    browser->setFilter(acbPaneCategoryTree, u"[Kategorie-Schlüssel]=0"_s);
    browser->RefreshPane(acbPaneCategoryTree);
    EXPECT_TRUE(tree().accessibleDescription().contains(u"Filter"_s));
}
