#include "browser/RowRefresh.h"

#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/NodeText.h"

namespace mkl {

using namespace Qt::StringLiterals;

void RowRefresh::RefreshItem(Long ItemKey, acbPanes Pane) {
    const BrowserState& state = hub_.state;
    const BrowserUi& ui = hub_.ui;
    switch (Pane) {
    case acbPaneArticlePool:
        if (state.ShowArticlePool && ui.LVArt->ListItems().Count() > 0)
            refreshInFrame(&RowRefresh::refreshPoolRow, ItemKey);
        break;
    case acbPaneArticleList:
        // The key is looked up before the frame: what it misses is the caller's error.
        if (state.ShowArticleList && ui.LV->ListItems().Count() > 0)
            refreshInFrame(&RowRefresh::refreshListRow, assignmentOf(ItemKey));
        break;
    case acbPaneCategoryTree:
        if (ui.TV->Nodes().Count() > 0) refreshInFrame(&RowRefresh::refreshNode, ItemKey);
        break;
    }
}

void RowRefresh::refreshInFrame(void (RowRefresh::*refresh)(Long), Long key) {
    const auto body = [&] {
        (this->*refresh)(key);
        return true;
    };
    hub_.errorFrame.function(u"RefreshItem"_s, body, false);
}

void RowRefresh::refreshPoolRow(Long articleKey) {
    // 1.
    const Ref<ListItem> item = hub_.ui.LVArt->ListItems().Item(rowKey(articleKey));
    // 2., 3.
    if (const auto articles = sought(u"ARTIKEL"_s, u"Artikel-Schlüssel"_s, articleKey)) {
        const ArticleRow row(articles, hub_.state.ArticleNumberPattern);
        item->setText(row.number());
        row.showInPool(*item);
    }
    // 4.
    if (hub_.state.closed || hub_.state.RefreshActive || !hub_.state.ShowArticleList) return;
    const Long assignment = hub_.selection->ArtKatID_FromArticle(articleKey);
    if (assignment != 0) refreshTwin(assignment, acbPaneArticleList);
}

// 1.
Long RowRefresh::assignmentOf(Long key) const {
    const ListItemCollection& items = hub_.ui.LV->ListItems();
    bool found = false;
    ErrorFrame::quietly([&] { found = bool(items.Item(rowKey(key))); });
    if (found) return key;
    const Long assignment = hub_.selection->ArtKatID_FromArticle(key);
    items.Item(rowKey(assignment));
    return assignment;
}

void RowRefresh::refreshListRow(Long assignmentKey) {
    const Ref<ListItem> item = hub_.ui.LV->ListItems().Item(rowKey(assignmentKey));
    // 2.
    const Long category = hub_.ui.TV->SelectedItem()->Tag().toLong();
    const Ref<dao::Recordset> rows =
        hub_.state.Backend->OpenRecordset(hub_.articlePanes->ListStatement(category, true), dao::dbOpenSnapshot);
    if (rows->Eof()) return;
    // 3.
    rows->FindFirst(u"[ArtKatID]="_s + QString::number(assignmentKey));
    // 4.
    if (rows->NoMatch()) return hub_.reportVanishedRecord();
    const AssignedArticleRow row(rows, hub_.state.ArticleNumberPattern);
    item->setText(row.position());
    row.showInList(*item);
    // 5.
    if (!hub_.state.RefreshActive) refreshTwin(row.articleKey().toLong(), acbPaneArticlePool);
}

// No lock, but an end to the two lists' calling each other. A failure leaves it as it stands.
void RowRefresh::refreshTwin(Long key, acbPanes pane) {
    hub_.state.RefreshActive = true;
    RefreshItem(key, pane);
    hub_.state.RefreshActive = false;
}

void RowRefresh::refreshNode(Long categoryKey) {
    // 1.
    const Ref<Node> node = hub_.ui.TV->Nodes().Item(nodeKey(categoryKey));
    // 2., 3.
    const auto category = sought(u"ARTIKEL/KATEGORIEN"_s, u"PrimaryKey"_s, categoryKey);
    if (!category) return;
    node->setText(nodeText(category->value(u"Order"), category->value(u"Kategoriename")));
    const Variant active = category->value(u"Aktiv");
    node->setImage(hub_.categoryTree->FolderImageKey(!active.isNull() && active.toBoolean(), node->Expanded()));
}

/// The table on the row of that key. Nothing if the row is gone, which is reported, or the table has no rows at all.
Ref<dao::Recordset> RowRefresh::sought(const QString& table, const QString& index, Long key) const {
    Ref<dao::Recordset> rows = hub_.state.Backend->OpenRecordset(table, dao::dbOpenTable);
    if (rows->Eof()) return {};
    rows->setIndex(index);
    rows->Seek(u"=", key);
    if (!rows->NoMatch()) return rows;
    hub_.reportVanishedRecord();
    return {};
}

void RowRefresh::RefreshPane(acbPanes Pane) {
    switch (Pane) {
    case acbPaneArticlePool:
        if (hub_.state.ShowArticlePool) hub_.articlePanes->PopulateLVArt(true);
        break;
    case acbPaneArticleList:
        if (hub_.state.ShowArticleList) refreshList();
        break;
    case acbPaneCategoryTree: hub_.categoryTree->X_PopulateTV(true); break;
    }
}

void RowRefresh::refreshList() {
    BrowserState& state = hub_.state;
    const Ref<ListItem> row = hub_.ui.LV->SelectedItem();
    // The row's tag is its assignment, though an article is meant: hosts rely on what comes of it.
    if (state.SelectedListArticle == 0 && row) state.SelectedListArticle = row->Tag().toLong();
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    if (state.SelectedCategory == 0 && node) state.SelectedCategory = node->Tag().toLong();
    hub_.articlePanes->PopulateLV(state.SelectedCategory);
    if (!state.closed) hub_.selection->SelectArticleInList(state.SelectedListArticle);
}

} // namespace mkl
