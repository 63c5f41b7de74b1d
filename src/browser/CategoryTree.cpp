#include "browser/CategoryTree.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/FolderImages.h"
#include "browser/KeptView.h"
#include "browser/NodeText.h"
#include "browser/TreeRead.h"
#include "controls/Asker.h"
#include "controls/Screen.h"
#include "core/CatalogQueries.h"
#include "core/MessageService.h"

#include <QScopeGuard>
#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

Long CategoryTree::X_PopulateTV(bool ShowStatus) {
    Long count = 0;
    const auto atTheEnd = qScopeGuard([&] { endRead(ShowStatus); });
    hub_.errorFrame.reader(u"X_PopulateTV"_s, [&] { count = readTree(ShowStatus); });
    return count;
}

Long CategoryTree::readTree(bool showStatus) {
    // 1.
    screen().setMousePointer(vbHourglass);
    const KeptView kept(hub_, *hub_.ui.TV);
    // 2.
    if (showStatus && !hub_.progressDisplay->ShowProgress(text(TextId::BrowserReadingCategories))) return 0;
    // 3.
    hub_.changeNotice->readBegins(acbPaneCategoryTree);
    TreeRead read(hub_);
    NodeCollection& nodes = hub_.ui.TV->Nodes();
    if (nodes.Count() > 0) nodes.Clear();
    // 4.
    const Ref<dao::Recordset> roots =
        hub_.state.Backend->OpenRecordset(CategoryStatement(u"[Parent] Is Null"_s), dao::dbOpenSnapshot);
    // 5.
    if (roots->RecordCount() > 0) {
        roots->MoveLast();
        hub_.ui.PB->setMax(roots->RecordCount());
        roots->MoveFirst();
        // 6.
        if (!read.run(*roots)) return 0;
    }
    kept.restore(*hub_.ui.TV);
    // 7.
    if (nodes.Count() > 0 && !selectKeptNode(read)) return 0;
    // 8.
    return nodes.Count();
}

bool CategoryTree::selectKeptNode(const TreeRead& read) {
    TreeView& tree = *hub_.ui.TV;
    const Ref<Node> node = keptNode();
    tree.setSelectedItem(node);
    hub_.selection->NodeClick(*node);
    if (!read.isCurrent()) return false; // a handler of the host closed the control or read the tree anew
    node->EnsureVisible();
    hub_.selection->selectKeptArticle();
    return !hub_.state.closed;
}

Ref<Node> CategoryTree::keptNode() const {
    const NodeCollection& nodes = hub_.ui.TV->Nodes();
    const Variant category = hub_.state.SelectedCategory;
    const auto kept = std::ranges::find_if(nodes, [&](const Ref<Node>& node) { return node->Tag() == category; });
    return kept == nodes.end() || category == Variant(0) ? nodes.Item(1) : *kept;
}

// 9.
void CategoryTree::endRead(bool showStatus) {
    ErrorFrame::quietly(
        [&] {
            if (!hub_.state.closed) ShowCategoryCount();
        }, //
        [&] {
            if (showStatus) hub_.progressDisplay->ShowProgress({});
        },
        [&] { screen().setMousePointer(vbDefault); });
}

QString CategoryTree::CategoryStatement(const QString& Base) const {
    const StringTools& tools = hub_.functionLibrary->StringTools();
    const BrowserState& state = hub_.state;
    QString criteria = Base;
    if (!state.WorkgroupFilter.isEmpty())
        tools.AppendCriterion(criteria, u"[ARTIKEL/KATEGORIEN].[Absender-Schlüssel] "_s + state.WorkgroupFilter,
                              u" AND "_s, true);
    if (const QString& filter = state.Filter[acbPaneCategoryTree]; !filter.isEmpty())
        tools.AppendCriterion(criteria, filter, u" AND "_s, true);
    return hub_.functionLibrary->SqlTools().InsertCriteria(catalogQueries().CategoryList(), criteria);
}

QString CategoryTree::FolderImageKey(bool Active, bool Expanded) const {
    return folderImage(Active, Expanded, hub_.state.Imageset);
}

Long CategoryTree::ReportTreeError(const QString& Text, const QString& Key, const QString& ParentKey) const {
    const QString category = Text.isEmpty() ? text(TextId::BrowserUnknownCategory)
                                            : text(TextId::BrowserCategory,
                                                   {NameFromNodeText(Text), QString::number(OrderFromNodeText(Text))});
    const Err& error = currentError();
    const QString detail = text(TextId::BrowserTreeError,
                                {category, Key, ParentKey, QString::number(error.Number()), error.Description()});
    return messageService().ShowCoded(1034, vbYesNo + vbCritical, detail);
}

void CategoryTree::ShowCategoryCount() {
    const QString count = QString::number(hub_.ui.TV->Nodes().Count());
    hub_.ui.SB->Panels(u"TV"_s).setText(text(TextId::BrowserCategoryCount, {count}));
}

void CategoryTree::Expand(Node& node) {
    showFolder(node, true);
}

void CategoryTree::Collapse(Node& node) {
    showFolder(node, false);
    hub_.selection->afterCollapse();
}

void CategoryTree::showFolder(Node& node, bool expanded) {
    node.setImage(FolderImageKey(isActiveImage(node.Image()), expanded));
}

} // namespace mkl
