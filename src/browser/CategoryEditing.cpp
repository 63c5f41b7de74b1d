#include "browser/CategoryEditing.h"

#include "base/Clock.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/CategoryRows.h"
#include "browser/FolderImages.h"
#include "browser/NodeText.h"
#include "browser/SenderFilter.h"
#include "browser/TreeNodes.h"
#include "browser/dialogs/frmNewCat.h"
#include "controls/Asker.h"
#include "core/MessageService.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Coded messages.
constexpr Long renamePrompt = 1042;
constexpr Long renameTitle = 1043;
constexpr Long labelBefore = 1045;
constexpr Long labelBehind = 1046;
constexpr Long labelAsSubcategory = 1047;
constexpr Long noSender = 1048;
constexpr Long deleteWithArticles = 1051;
constexpr Long deleteWithDescendants = 1052;
constexpr Long deleteEmpty = 1059;
constexpr Long deactivateDescendants = 1065;
constexpr Long categoryNotFound = 1072;

constexpr Long question = vbYesNo | vbQuestion;

const QString categoryKey = u"Kategorie-Schlüssel"_s;

} // namespace

// --- new ------------------------------------------------------------------------------------------------------------

struct CategoryEditing::NewCategory {
    QString name;
    QString note;
    bool active = true;
    Variant parent = {};
    Long order = 1;
    TreeRelationshipConstants relationship = tvwNext;

    /// Before (1), behind (2) or below (3) the selected one.
    void stand(Long place, const Node& selected) {
        const Ref<Node> parentNode = selected.Parent();
        const Long position = OrderFromNodeText(selected.Text());
        if (place == 3) {
            parent = selected.Tag();
            order = selected.Children() + 1;
            relationship = tvwChild;
            return;
        }
        parent = parentNode ? parentNode->Tag() : Variant();
        relationship = place == 1 ? tvwPrevious : tvwNext;
        order = std::max<Long>(1, place == 1 ? sumOfPositions(position, -1) : sumOfPositions(position, 1));
    }
};

void CategoryEditing::kTV_New() {
    TransMark mark(hub_.state.Workspace);
    const auto afterFailure = [this] {
        if (!hub_.state.closed) hub_.categoryTree->X_PopulateTV(true);
    };
    hub_.errorFrame.command(
        u"NewCategory"_s, mark, [&] { newCategory(mark); }, afterFailure);
}

void CategoryEditing::newCategory(TransMark& mark) {
    BrowserState& state = hub_.state;
    // 1.
    const Ref<Node> selected = hub_.ui.TV->SelectedItem();
    if (!selected && hub_.ui.TV->Nodes().Count() > 0) return;
    // 2.
    if (!findSender()) return;
    // 3. to 8.
    NewCategory category;
    if (!askForCategory(selected.get(), category) || state.closed) return;
    // 9.
    const Long key = hub_.keyAllocation->NewID(categoryTable, categoryKey);
    if (key == -1 || state.closed) return;
    // 10.
    mark.begin();
    storeCategory(category, key);
    // 11.
    if (selected) addNode(category, key, *selected);
    if (state.closed) return mark.rollbackIfOpen(); // while the user read of a failure
    // 12.
    mark.commit();
    state.Edited = true;
    // 13.
    state.SelectedListArticle = 0;
    hub_.categoryTree->X_PopulateTV(true);
    if (!state.closed) selectNew(category, key);
}

bool CategoryEditing::findSender() {
    BrowserState& state = hub_.state;
    if (state.CurrentSenderID != 0) return true;
    const Long sender = SenderFromWorkgroupFilter(state.WorkgroupFilter, state.Backend);
    if (sender == 0)
        messageService().ShowCoded(noSender, vbCritical);
    else
        state.CurrentSenderID = sender;
    return sender != 0;
}

bool CategoryEditing::askForCategory(const Node* selected, NewCategory& category) const {
    frmNewCat form(&hub_.face);
    // 3.
    form.A_Init(hub_.errorFrame.handler(), hub_.functionLibrary, hub_.state.Backend, hub_.state.WorkgroupFilter);
    if (selected)
        showPlaces(form, *selected); // 4.
    else
        form.Frame1.hide(); // 5.
    // 6.
    form.chkActive.setValue(1);
    form.Show();
    if (hub_.state.closed) return false;
    // 7.
    const Long place = form.txtResult.Text().toInt();
    category.name = form.txtCatName.Text();
    category.note = form.txtNote.Text();
    category.active = form.chkActive.Value() != 0;
    if (category.name.isEmpty() || place == 0) return false;
    // 8.
    if (selected) category.stand(place, *selected);
    return true;
}

void CategoryEditing::showPlaces(frmNewCat& form, const Node& selected) const {
    const ErrorHandler& texts = *hub_.errorFrame.handler();
    const QString name = NameFromNodeText(selected.Text());
    form.lbl(1).setCaption(texts.MessageText(labelBefore, name));
    form.lbl(2).setCaption(texts.MessageText(labelBehind, name));
    form.lbl(3).setCaption(texts.MessageText(labelAsSubcategory, name));
    const Ref<Node> parent = selected.Parent();
    form.txtParentID.setText(parent ? parent->Tag().toText() : QString());
    form.txtCurrentID.setText(selected.Tag().toText());
    const bool isLastOfSeveral = !selected.Next() && selected.Previous();
    const Long option = isLastOfSeveral ? 1 : 2;
    form.Opt(option).setValue(true);
    form.Opt_Click(option);
}

void CategoryEditing::storeCategory(const NewCategory& category, Long key) const {
    const Ref<dao::Recordset> table = hub_.state.Backend->OpenRecordset(categoryTable, dao::dbOpenTable);
    table->AddNew();
    table->setValue(categoryKey, key);
    table->setValue(u"Absender-Schlüssel", hub_.state.CurrentSenderID);
    table->setValue(u"Kategoriename", category.name);
    table->setValue(u"Bezeichnung", hub_.functionLibrary->StringTools().TitleFromName(category.note, 0));
    table->setValue(u"LetzteÄnderung", Variant::date(clock().now()));
    table->setValue(u"Parent", category.parent);
    table->setValue(u"Order", category.order);
    table->setValue(u"Aktiv", category.active);
    table->Update();
}

// The picture without the image set shows until the tree is read again.
void CategoryEditing::addNode(const NewCategory& category, Long key, const Node& selected) const {
    const Ref<Node> node =
        TV_AddNode(*hub_.ui.TV, selected.Index(), category.relationship, nodeKey(key),
                   nodeText(category.order, category.name), key, folderImage(category.active, false, acbImageset1));
    hub_.categoryOrder->OrderCategory(*node, false);
}

void CategoryEditing::selectNew(const NewCategory& category, Long key) const {
    const auto isNew = [key](const Ref<Node>& node) { return node->Tag() == Variant(key); };
    if (std::ranges::any_of(hub_.ui.TV->Nodes(), isNew)) return hub_.selection->LetSelected(acbPaneCategoryTree, key);
    // The pane's filter may hide it; but where its parent went while the user filled the form nobody will ever see it.
    if (!category.parent.isNull() && isGone(category.parent.toLong()))
        messageService().ShowCoded(categoryNotFound, vbCritical);
}

// Where that cannot be found out, whoever read the tree has said why.
bool CategoryEditing::isGone(Long category) const {
    bool gone = false;
    ErrorFrame::quietly([&] { gone = !categoryExists(hub_.state.Backend, category); });
    return gone;
}

// --- rename ---------------------------------------------------------------------------------------------------------

void CategoryEditing::kTV_Rename() {
    hub_.errorFrame.reader(u"RenameCategory"_s, [this] { rename(); });
}

void CategoryEditing::rename() {
    // 1.
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    if (!node) return;
    const Long category = node->Tag().toLong();
    const QString name = NameFromNodeText(node->Text());
    // 2., 3.
    const ErrorHandler& texts = *hub_.errorFrame.handler();
    const QString answer =
        asker()
            .askText(texts.MessageText(renamePrompt, name), texts.MessageText(renameTitle, name), name)
            .value_or(QString());
    if (answer.isEmpty() || hub_.state.closed) return;
    // 4.
    const Ref<dao::Recordset> table = openCategories(hub_.state.Backend);
    table->Seek(u"=", category);
    if (table->NoMatch()) {
        messageService().ShowCoded(categoryNotFound, vbCritical);
        return;
    }
    // 5.
    table->Edit();
    table->setValue(u"Kategoriename", answer);
    const Variant order = table->value(u"Order");
    table->Update();
    hub_.state.Edited = true;
    // 6.
    node->setText(nodeText(order, answer));
}

// --- delete ---------------------------------------------------------------------------------------------------------

void CategoryEditing::kTV_Delete() {
    TransMark mark(hub_.state.Workspace);
    const auto afterFailure = [this] {
        if (!hub_.state.closed) hub_.categoryTree->X_PopulateTV(true);
    };
    hub_.errorFrame.command(
        u"DeleteCategory"_s, mark, [&] { deleteCategory(mark); }, afterFailure);
}

void CategoryEditing::deleteCategory(TransMark& mark) {
    // 1.
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    if (!node) return;
    const Long category = node->Tag().toLong();
    std::vector<Ref<Node>> descendants;
    const Long count = TV_ChildNodes(*node, descendants, true);
    // 2.
    if (!isDeletionWanted(NameFromNodeText(node->Text()), category, count) || hub_.state.closed) return;
    // 3.
    const Ref<Node> previous = node->Previous();
    const Ref<Node> neighbour = previous ? previous : node->Next();
    // 4. to 6.
    mark.begin();
    if (!deleteRows(category, descendants)) return; // the transaction stays open
    // 7.
    hub_.ui.TV->Nodes().Remove(node->Key());
    if (neighbour) hub_.categoryOrder->OrderCategory(*neighbour, false);
    if (hub_.state.closed) return mark.rollbackIfOpen(); // while the user read of a failure
    // 8.
    mark.commit();
    hub_.state.Edited = true;
    hub_.categoryTree->X_PopulateTV(true);
    // 9.
    if (neighbour && !hub_.state.closed) selectNeighbour(neighbour->Tag().toLong());
}

bool CategoryEditing::isDeletionWanted(const QString& name, Long key, Long descendants) const {
    const MessageService& messages = messageService();
    if (descendants > 0) return messages.ShowCoded(deleteWithDescendants, question, {}, name, descendants) == vbYes;
    const Long articles = articlesOf(key);
    if (articles > 0) return messages.ShowCoded(deleteWithArticles, question, {}, name, articles) == vbYes;
    return messages.ShowCoded(deleteEmpty, question, {}, name) == vbYes;
}

Long CategoryEditing::articlesOf(Long category) const {
    if (hub_.state.ShowArticleList) return hub_.ui.LV->ListItems().Count();
    return hub_.functionLibrary->DataTools().CountRows(hub_.state.Backend, u"ARTKAT"_s,
                                                       u"[Kategorie-Schlüssel]="_s + QString::number(category));
}

bool CategoryEditing::deleteRows(Long category, const std::vector<Ref<Node>>& descendants) const {
    const Ref<dao::Recordset> table = openCategories(hub_.state.Backend);
    const auto deleteRow = [&](Long key) {
        table->Seek(u"=", key);
        if (!table->NoMatch()) {
            table->Delete();
            return true;
        }
        messageService().ShowCoded(categoryNotFound, vbCritical);
        return false;
    };
    // 5., 6.
    return deleteRow(category) &&
           std::ranges::all_of(descendants, [&](const Ref<Node>& node) { return deleteRow(node->Tag().toLong()); });
}

void CategoryEditing::selectNeighbour(Long category) const {
    const NodeCollection& nodes = hub_.ui.TV->Nodes();
    const auto found =
        std::ranges::find_if(nodes, [category](const Ref<Node>& node) { return node->Tag() == Variant(category); });
    if (found == nodes.end()) return;
    const Ref<Node> node = *found;
    hub_.ui.TV->setSelectedItem(node);
    hub_.selection->NodeClick(*node);
}

// --- activate -------------------------------------------------------------------------------------------------------

void CategoryEditing::kTV_Activate() {
    hub_.errorFrame.reader(u"TVActivate"_s, [this] { activate(); });
}

void CategoryEditing::activate() {
    // 1.
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    if (!node) return;
    const bool active = offersActive(hub_.ui.menus.Item(u"kTV_Activate"));
    // 2., 3.
    std::vector<Ref<Node>> nodes;
    if (!active && node->Children() > 0) {
        const Long count = TV_ChildNodes(*node, nodes, true);
        if (messageService().ShowCoded(deactivateDescendants, question, {}, count) != vbYes) return;
        if (hub_.state.closed) return;
    }
    nodes.push_back(node);
    // 4.
    const Ref<dao::Recordset> table = openCategories(hub_.state.Backend);
    for (const Ref<Node>& each : nodes) {
        TVActivate_Item(*table, each->Tag().toLong(), active);
        if (hub_.state.closed) return; // while the user read of a failure
    }
    // 5.
    hub_.state.Edited = true;
}

void CategoryEditing::TVActivate_Item(dao::Recordset& Table, Long CatID, bool Active) {
    Table.Seek(u"=", CatID);
    if (Table.NoMatch()) return hub_.reportVanishedRecord(u"TVActivate"_s);
    Table.Edit();
    Table.setValue(u"Aktiv", Active);
    Table.Update();
    hub_.rowRefresh->RefreshItem(CatID, acbPaneCategoryTree);
}

} // namespace mkl
