#include "browser/DropActions.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/NodeText.h"
#include "controls/Asker.h"
#include "core/MessageService.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long severalArePresent = 1061;
constexpr Long articleIsPresent = 1062;

} // namespace

Long DropActions::DragDrop_CheckCat(Long CatID, ArticleAssignment::ItemList& Items, acbPanes Pane) const {
    Items.clear();
    return hub_.errorFrame.function(
        u"DragDrop_CheckCat"_s,
        [&] {
            // 1.
            if (Pane == acbPaneArticleList && hub_.ui.LV->SelectedCount() <= 1) return checkOne(CatID, Items);
            return checkSeveral(CatID, Items, Pane);
        },
        0);
}

Long DropActions::checkOne(Long category, ArticleAssignment::ItemList& items) const {
    const ArticleAssignment& assignment = *hub_.articleAssignment;
    const Ref<ListItem> item = hub_.ui.LV->SelectedItem();
    const Long article = assignment.ArticleID_FromListItem(*item, acbPaneArticleList);
    if (!assignment.Article_IsInCat(article, category)) {
        items = {item};
        return 1;
    }
    messageService().ShowCoded(articleIsPresent, vbCritical);
    return 0;
}

Long DropActions::checkSeveral(Long category, ArticleAssignment::ItemList& items, acbPanes pane) const {
    const ArticleAssignment& assignment = *hub_.articleAssignment;
    // 2.
    if (assignment.Article_SelectedArray(items, pane) == 0) return 0;
    // 3.
    const Long present = deselectPresent(category, items, pane);
    if (hub_.state.closed) return 0;
    // 4.
    const Long left = assignment.Article_SelectedArray(items, pane);
    if (left == 0) {
        if (present != 0)
            messageService().ShowCoded(severalArePresent, vbCritical, {}, text(TextId::BrowserMarkedArticles));
        else
            messageService().ShowCoded(articleIsPresent, vbCritical);
        return 0;
    }
    // 5.
    if (present > 0 &&
        messageService().ShowCoded(severalArePresent, vbOKCancel | vbExclamation, {}, present) == vbCancel)
        return 0;
    // 6.
    return left;
}

Long DropActions::deselectPresent(Long category, const ArticleAssignment::ItemList& items, acbPanes pane) const {
    const ArticleAssignment& assignment = *hub_.articleAssignment;
    ArticleAssignment::ItemList present;
    for (const Ref<ListItem>& item : items) {
        if (assignment.Article_IsInCat(assignment.ArticleID_FromListItem(*item, pane), category))
            present.push_back(item);
        if (hub_.state.closed) return 0; // while the user read of a failure
    }
    (pane == acbPaneArticlePool ? hub_.ui.LVArt : hub_.ui.LV)->deselect(present);
    return static_cast<Long>(present.size());
}

Long DropActions::DragDrop_AddArticles(Long CatID, const QString& CatName, acbPanes Pane, Long OldCatID,
                                       const QString& OldCatName, Long Position) {
    ArticleAssignment& assignment = *hub_.articleAssignment;
    Long result = 0;
    TransMark mark(hub_.state.Workspace);
    hub_.errorFrame.command(u"DragDrop_AddArticles"_s, mark, [&] {
        // 1.
        ArticleAssignment::ItemList items;
        const Long count = DragDrop_CheckCat(CatID, items, Pane);
        if (count == 0 || hub_.state.closed) return;
        // 2.
        const Long position = assignment.ArticlePosDialog(CatID, CatName, OldCatName, count, Position);
        if (position == 0 || hub_.state.closed) return;
        // 3.
        mark.begin();
        // 4.
        hub_.articleOrder->Cat_RenumberArticles(CatID, position, count);
        // 5.
        if (!hub_.state.closed) assignment.Cat_AddArticles(CatID, position, items, Pane);
        // 6.
        if (!hub_.state.closed && OldCatID != 0 && Pane == acbPaneArticleList)
            assignment.Cat_DeleteArticles(OldCatID, items);
        if (hub_.state.closed) return mark.rollbackIfOpen(); // while the user read of a failure
        // 7.
        mark.commit();
        hub_.state.Edited = true;
        result = count;
    });
    return result;
}

void DropActions::addPoolSelection() {
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    const Ref<ListItem> focused = hub_.ui.LVArt->SelectedItem();
    if (!node || !focused) return;
    const Long article = focused->Tag().toLong();
    const Long added =
        DragDrop_AddArticles(node->Tag().toLong(), NameFromNodeText(node->Text()), acbPaneArticlePool, 0, {}, 0);
    if (added != 0 && !hub_.state.closed) showAdded(*node, article);
}

void DropActions::showAdded(Node& node, Long article) {
    const Ref<Node> target = &node;
    hub_.articlePanes->PopulateLV(target->Tag().toLong());
    if (hub_.state.closed) return;
    hub_.state.SelectedListArticle = article;
    hub_.selection->NodeClick(*target);
    if (!hub_.state.closed) hub_.paneStatus->ShowPoolStatus(-1);
}

} // namespace mkl
