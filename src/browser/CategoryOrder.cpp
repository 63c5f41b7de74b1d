#include "browser/CategoryOrder.h"

#include "base/Clock.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/CategoryRows.h"
#include "browser/NodeText.h"
#include "browser/TreeNodes.h"
#include "controls/Asker.h"
#include "core/MessageService.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long sortQuestion = 1037;

Variant now() {
    return Variant::date(clock().now());
}

void writeOrder(dao::Recordset& row, Long order) {
    row.Edit();
    row.setValue(u"Order", order);
    row.setValue(u"LetzteÄnderung", now());
    row.Update();
}

/// Where a category stands.
struct Place {
    Long key;
    Long position;
    Long parent; ///< 0 at the top level
};

Place placeOf(const Node& node) {
    const Ref<Node> parent = node.Parent();
    return {node.Tag().toLong(), OrderFromNodeText(node.Text()), parent ? parent->Tag().toLong() : 0};
}

void takePlace(dao::Recordset& row, const Place& place) {
    row.Edit();
    row.setValue(u"Order", place.position);
    row.setValue(u"Parent", place.parent < 1 ? Variant() : Variant(place.parent));
    row.setValue(u"LetzteÄnderung", now());
    row.Update();
}

} // namespace

bool CategoryOrder::OrderCategory(const Node& Node, bool SkipNode) {
    bool done = false;
    hub_.errorFrame.reader(u"OrderCategory"_s, [&] { done = writeLevel(Node, SkipNode); });
    return done;
}

bool CategoryOrder::writeLevel(const Node& node, bool skipNode) const {
    // 1.
    Ref<Node> each = node.FirstSibling();
    if (!each) return false;
    // 2.
    const Ref<dao::Recordset> table = openCategories(hub_.state.Backend);
    // 3.
    for (Long counter = 1; each; each = each->Next()) {
        if (skipNode && each.get() == &node) continue;
        table->Seek(u"=", each->Tag().toLong());
        if (table->NoMatch()) return false;
        writeOrder(*table, counter++);
    }
    // 4.
    return true;
}

void CategoryOrder::Renumber(bool Descending) {
    TransMark mark(hub_.state.Workspace);
    hub_.errorFrame.command(u"Renumber"_s, mark, [&] {
        // 1.
        const Ref<Node> node = hub_.ui.TV->SelectedItem();
        if (!node) return;
        // 2.
        if (isSortWanted(Descending) && !hub_.state.closed) sortLevel(*node, Descending, mark);
    });
}

bool CategoryOrder::isSortWanted(bool descending) const {
    const QString direction = text(descending ? TextId::BrowserDescending : TextId::BrowserAscending);
    return messageService().ShowCoded(sortQuestion, vbYesNo | vbQuestion, {}, direction) == vbYes;
}

// Where the statement has no row at all the transaction stays open.
void CategoryOrder::sortLevel(const Node& node, bool descending, TransMark& mark) {
    const Long article = hub_.state.SelectedListArticle;
    {
        // 4.
        mark.begin();
        const Ref<dao::Recordset> rows =
            hub_.state.Backend->OpenRecordset(hub_.categoryTree->CategoryStatement({}), dao::dbOpenDynaset);
        if (rows->RecordCount() < 1) return;
        // 5. to 7.
        numberByName(*rows, node, descending);
        // 8.
        if (hub_.state.closed) return mark.rollbackIfOpen(); // while the user read the message
        mark.commit();
    }
    hub_.categoryTree->X_PopulateTV(true);
    if (!hub_.state.closed) hub_.selection->LetSelected(acbPaneArticleList, article);
}

void CategoryOrder::numberByName(dao::Recordset& rows, const Node& node, bool descending) const {
    // 3.
    const Ref<Node> parent = node.Parent();
    const QString level = parent ? u"[Parent]="_s + QString::number(parent->Tag().toLong()) : u"[Parent] Is Null"_s;
    // 5.
    rows.setSort(descending ? u"Kategoriename DESC"_s : u"Kategoriename"_s);
    rows.setFilter(level);
    const Ref<dao::Recordset> sorted = rows.OpenRecordset();
    // 7.
    if (sorted->RecordCount() < 1) {
        messageService().ShowCoded(0, vbInformation, text(TextId::BrowserNothingToSort));
        return;
    }
    // 6.
    sorted->MoveFirst();
    for (Long position = 1; !sorted->Eof(); sorted->MoveNext())
        writeOrder(*sorted, position++);
}

bool CategoryOrder::SwapCategories(const Node& Node1, const Node& Node2) {
    bool done = false;
    hub_.errorFrame.reader(u"SwapCategories"_s, [&] {
        // 1.
        const Ref<dao::Recordset> rows =
            hub_.state.Backend->OpenRecordset(hub_.categoryTree->CategoryStatement({}), dao::dbOpenDynaset);
        // 2.
        const Place first = placeOf(Node1);
        const Place second = placeOf(Node2);
        // 3.
        const std::pair<Long, Place> changes[] = {{first.key, second}, {second.key, first}};
        for (const auto& [category, place] : changes) {
            rows->FindFirst(u"[Kategorie-Schlüssel]="_s + QString::number(category));
            if (rows->NoMatch())
                hub_.reportVanishedRecord(u"SwapCategories"_s);
            else
                takePlace(*rows, place);
        }
        // 4.
        done = true;
    });
    return done;
}

void CategoryOrder::EditParent(Long CatID, const Variant& NewParent) {
    hub_.errorFrame.reader(u"EditParent"_s, [&] {
        const Ref<dao::Recordset> table = openCategories(hub_.state.Backend);
        table->Seek(u"=", CatID);
        if (table->NoMatch()) return;
        table->Edit();
        table->setValue(u"Parent", NewParent);
        table->setValue(u"LetzteÄnderung", now());
        table->Update();
    });
}

void CategoryOrder::kTV_NewPosition() {
    TransMark mark(hub_.state.Workspace);
    const auto body = [&] {
        // 1.
        const Ref<Node> node = hub_.ui.TV->SelectedItem();
        if (!node) return;
        const Long current = OrderFromNodeText(node->Text());
        const Long wanted = hub_.articleOrder->PositionEditor(current, TV_SiblingCount(*node));
        if (wanted == 0 || hub_.state.closed) return;
        // 2.
        const Ref<Node> target = TV_SiblingAt(*node, wanted);
        if (target) move(*node, *target, wanted > current, mark);
    };
    const auto afterFailure = [this] {
        if (!hub_.state.closed) hub_.categoryTree->X_PopulateTV(true);
    };
    hub_.errorFrame.command(u"kTV_NewPosition_Click"_s, mark, body, afterFailure);
}

void CategoryOrder::moveSelected(Long step) {
    TransMark mark(hub_.state.Workspace);
    const auto body = [&] {
        const Ref<Node> node = hub_.ui.TV->SelectedItem();
        const Ref<Node> target = !node ? node : step < 0 ? node->Previous() : node->Next();
        if (target) move(*node, *target, step > 0, mark);
    };
    const auto afterFailure = [this] {
        if (!hub_.state.closed) hub_.categoryTree->X_PopulateTV(true);
    };
    hub_.errorFrame.command(u"kTV_NewPosition_Click"_s, mark, body, afterFailure);
}

void CategoryOrder::move(Node& node, Node& target, bool behind, TransMark& mark) {
    TreeView& tree = *hub_.ui.TV;
    const Long article = hub_.state.SelectedListArticle;
    // 3.
    Ref<Node> moved = &node;
    if (&target != &node) { // in a level with holes the place can be its own
        const Ref<Node> neighbour = &target;
        tree.Nodes().Remove(node.Key());
        moved = TV_AddNode(tree, neighbour->Index(), behind ? tvwNext : tvwPrevious, moved->Key(), moved->Text(),
                           moved->Tag(), moved->Image());
    }
    // 4.
    mark.begin();
    OrderCategory(*moved, false);
    if (hub_.state.closed) return mark.rollbackIfOpen(); // while the user read of a failure
    mark.commit();
    hub_.state.Edited = true;
    // 5.
    hub_.categoryTree->X_PopulateTV(true);
    if (!hub_.state.closed) hub_.selection->LetSelected(acbPaneArticleList, article);
}

void CategoryOrder::kTV_SortInc() {
    Renumber(false);
}

void CategoryOrder::kTV_SortDesc() {
    Renumber(true);
}

} // namespace mkl
