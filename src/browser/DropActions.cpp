#include "browser/DropActions.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/CategoryRows.h"
#include "browser/NodeText.h"
#include "browser/TreeNodes.h"
#include "browser/dialogs/frmArtCatBrowserOrder.h"
#include "controls/Asker.h"
#include "core/MessageService.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Coded messages.
constexpr Long swapPositions = 1024;
constexpr Long moveToPosition = 1025;
constexpr Long ownSubcategory = 1041;
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
        if (!isStillThere(CatID, mark)) return;
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

// Articles in a category that is gone would be seen by nobody, and moved ones were lost from where they are.
bool DropActions::isStillThere(Long category, TransMark& mark) const {
    if (categoryExists(hub_.state.Backend, category)) return true;
    mark.rollbackIfOpen();
    hub_.reportVanishedRecord(u"DragDrop_AddArticles"_s);
    return false;
}

// --- drops ----------------------------------------------------------------------------------------------------------

void DropActions::DropOn(acbPanes pane) {
    if (pane == acbPaneArticleList)
        hub_.errorFrame.reader(u"LV_DragDrop"_s, [&] { dropOnList(); });
    else if (pane == acbPaneCategoryTree)
        hub_.errorFrame.reader(u"TVDrag"_s, [&] { dropOnTree(); });
    if (!hub_.state.closed) hub_.dragDrop->DragEnd();
}

void DropActions::dropOnList() {
    const DragState& drag = hub_.state.drag;
    const ListView& list = *hub_.ui.LV;
    if (!drag.DragItem) return;
    // 1.
    if (!isCategorySelected()) return;
    // 2.
    if (!list.DropHighlight()) {
        if (drag.DragFromList) return;
        addAtFirstRow();
    }
    // 3.
    const Long category = hub_.ui.TV->SelectedItem()->Tag().toLong();
    const Ref<ListItem> target = list.DropHighlight();
    if (target && target->Key() == drag.DragItem->Key() && !drag.DragFromPool) return;
    // 4. to 6.
    if (drag.DragFromPool)
        addToSelected(target ? positionOfListRow(*target) : 0, drag.DragItem->Tag().toLong());
    else if (drag.DragCopy == 0)
        moveOrSwap(category);
}

bool DropActions::isCategorySelected() const {
    const TreeView& tree = *hub_.ui.TV;
    if (tree.SelectedItem()) return true;
    const bool isEmpty = tree.Nodes().Count() == 0;
    messageService().ShowCoded(0, vbExclamation,
                               text(isEmpty ? TextId::BrowserNoCategoryYet : TextId::BrowserMarkTargetCategory));
    return false;
}

// The free area stands for the first row.
void DropActions::addAtFirstRow() const {
    ListView& list = *hub_.ui.LV;
    if (list.ListItems().Count() == 0) return;
    const Ref<ListItem> first = list.ListItems().Item(1);
    list.setSelectedItem(first);
    list.setDropHighlight(first);
    first->EnsureVisible();
}

void DropActions::addToSelected(Long position, Long article) {
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    const Long added =
        DragDrop_AddArticles(node->Tag().toLong(), NameFromNodeText(node->Text()), acbPaneArticlePool, 0, {}, position);
    if (added == 0 || hub_.state.closed) return;
    hub_.articlePanes->PopulateLV(node->Tag().toLong());
    if (!hub_.state.closed) showAdded(*node, article);
}

// 6.
void DropActions::moveOrSwap(Long category) {
    ListView& list = *hub_.ui.LV;
    const Ref<ListItem> dragged = hub_.state.drag.DragItem;
    const Ref<ListItem> target = list.DropHighlight();
    const Long from = positionOfListRow(*dragged);
    const Long to = positionOfListRow(*target);
    if (list.SelectedCount() > 1) {
        list.deselectOthers({});
        list.setSelectedItem(dragged);
    }
    const ErrorHandler& texts = *hub_.errorFrame.handler();
    const Long choice = OrderDialog(&hub_.face, texts.MessageText(swapPositions, from, to),
                                    texts.MessageText(moveToPosition, from, to), {});
    if (choice == 0 || hub_.state.closed) return;
    const Long row = dragged->Tag().toLong();
    const Long targetRow = target->Tag().toLong();
    if (choice == 1)
        hub_.articleOrder->LV_SwapPositions(row, to, targetRow, from);
    else
        hub_.articleOrder->ReorderCategories(to, from, targetRow, row, category);
    if (hub_.state.closed) return;
    list.setDropHighlight({});
    hub_.articlePanes->PopulateLV(category);
    if (hub_.state.closed) return;
    const Ref<ListItem> moved = list.ListItems().Item(dragged->Key());
    list.setSelectedItem(moved);
    hub_.selection->ListItemClick(*moved);
}

void DropActions::dropOnTree() {
    const DragState& drag = hub_.state.drag;
    TreeView& tree = *hub_.ui.TV;
    // 1.
    const Ref<Node> target = tree.DropHighlight();
    if ((!drag.DragNode && !drag.DragItem) || !target) return;
    // 2.
    if (drag.DragFromPool) return addFromPoolTo(*target);
    // 3.
    const Ref<Node> source = tree.SelectedItem();
    if (source->Key() == target->Key()) return;
    // 4., 5.
    if (drag.DragFromList)
        takeArticlesTo(*source, *target);
    else
        takeCategoryTo(*source, *target);
}

// 2.
void DropActions::addFromPoolTo(Node& target) {
    const Ref<Node> node = &target;
    const Long article = hub_.state.drag.DragItem->Tag().toLong();
    const Long category = node->Tag().toLong();
    hub_.ui.TV->setSelectedItem(node);
    hub_.selection->SetCategoryOfTree(category);
    hub_.selection->NodeClick(*node);
    if (hub_.state.closed) return;
    hub_.ui.TV->setDropHighlight({});
    addToSelected(0, article);
}

// 4.
void DropActions::takeArticlesTo(Node& source, Node& target) {
    ListView& list = *hub_.ui.LV;
    const Ref<Node> node = &target;
    const Long article = articleOfListRow(*list.SelectedItem());
    const Long category = node->Tag().toLong();
    const QString name = NameFromNodeText(node->Text());
    const Long handled = hub_.state.drag.DragCopy == 1
                             ? DragDrop_AddArticles(category, name, acbPaneArticleList, 0, {}, 0)
                             : DragDrop_AddArticles(category, name, acbPaneArticleList, source.Tag().toLong(),
                                                    NameFromNodeText(source.Text()), 0);
    if (handled == 0 || hub_.state.closed) return;
    if (list.SelectedCount() > 1) {
        list.deselectOthers({});
        hub_.state.SelectedListArticle = 0;
    }
    hub_.ui.TV->setDropHighlight({});
    hub_.ui.TV->setSelectedItem(node);
    hub_.selection->NodeClick(*node);
    // The click has selected a row of its own where it knew of no article.
    if (!hub_.state.closed && hub_.selection->SelectArticleInList(article)) list.deselectOthers(list.SelectedItem());
}

// 5.
void DropActions::takeCategoryTo(Node& source, Node& target) {
    const Ref<Node> parent = source.Parent();
    if (parent.get() == &target) return;
    if (TV_IsAncestor(target, source)) {
        messageService().ShowCoded(ownSubcategory, vbCritical);
    } else if (hub_.state.drag.DragCopy == 0) {
        hub_.categoryTransfer->TVDragCategory(source, target);
    } else {
        const QString keyToExpand = parent ? parent->Key() : source.Key();
        const Long copy = hub_.categoryTransfer->TVDragCategory_Copy(source, target);
        if (copy != 0 && !hub_.state.closed) showCopy(copy, keyToExpand);
    }
}

void DropActions::showCopy(Long newCategory, const QString& keyToExpand) const {
    const TreeView& tree = *hub_.ui.TV;
    hub_.state.SelectedCategory = newCategory;
    hub_.categoryTree->X_PopulateTV(true);
    if (hub_.state.closed) return;
    // Where the tree could not be read the user knows why.
    ErrorFrame::quietly([&] { tree.Nodes().Item(keyToExpand)->setExpanded(true); });
    if (const Ref<Node> selected = tree.SelectedItem()) selected->EnsureVisible();
}

void DropActions::addPoolSelection() {
    const Ref<ListItem> focused = hub_.ui.LVArt->SelectedItem();
    if (hub_.ui.TV->SelectedItem() && focused) addToSelected(0, focused->Tag().toLong());
}

// A filter for articles without a category that shows nothing any more switches itself off.
void DropActions::showAdded(Node& node, Long article) {
    const BrowserUi& ui = hub_.ui;
    hub_.state.SelectedListArticle = article;
    hub_.selection->NodeClick(node);
    if (hub_.state.closed) return;
    hub_.paneStatus->ShowPoolStatus(-1);
    if (ui.menus.Item(u"KLVArt_UnCategorized").Checked() && ui.LVArt->ListItems().Count() == 0)
        hub_.poolFilters->KLVArt_UnCategorized();
}

} // namespace mkl
