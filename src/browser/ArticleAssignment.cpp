#include "browser/ArticleAssignment.h"

#include "base/Clock.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/NodeText.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "controls/Asker.h"
#include "core/MessageService.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long deleteQuestion = 1038;

QString ofArticle(Long article) {
    return u"[Artikel-Schlüssel]="_s + QString::number(article);
}

} // namespace

bool ArticleAssignment::Article_IsInCat(Long ArticleID, Long CatID) const {
    return hub_.errorFrame.function(
        u"Article_IsInCat"_s,
        [&] {
            // 1.
            const QString criterion = ofArticle(ArticleID) + u" AND [Kategorie-Schlüssel]="_s + QString::number(CatID);
            // 2.
            const Ref<dao::Recordset> rows = hub_.state.Backend->OpenRecordset(u"ArtKat"_s, dao::dbOpenSnapshot);
            rows->FindFirst(criterion);
            return !rows->NoMatch();
        },
        false);
}

Long ArticleAssignment::Article_SelectedArray(ItemList& Items, acbPanes Pane) const {
    Items.clear();
    return hub_.errorFrame.function(
        u"Article_SelectedArray"_s,
        [&] {
            const ListView& list = Pane != acbPaneArticlePool ? *hub_.ui.LV : *hub_.ui.LVArt;
            Items = list.SelectedItems();
            return static_cast<Long>(Items.size());
        },
        0);
}

Long ArticleAssignment::ArticleID_FromListItem(const ListItem& Item, acbPanes Pane) const {
    return hub_.errorFrame.function(
        u"ArticleID_FromListItem"_s,
        [&] { return Pane != acbPaneArticlePool ? articleOfListRow(Item) : Item.Tag().toLong(); }, 0);
}

Long ArticleAssignment::ArticlePosDialog(Long CatID, const QString& CatName, const QString& OldCatName, Long ArtCount,
                                         Long Position) const {
    Long position = 0;
    hub_.errorFrame.reader(u"ArticlePosDialog"_s, [&] {
        // 1.
        const Long highest = hub_.articleOrder->MaxOrder(CatID).value_or(0);
        // 2.
        frmArticleNewPos form(&hub_.face);
        form.pubInit(CatName, OldCatName, highest, ArtCount, Position);
        form.Show();
        // 3.
        if (form.chkCancel.Value() != 0 || hub_.state.closed) return;
        if (form.Opt(0).Value())
            position = 1;
        else if (form.Opt(1).Value())
            position = sumOfPositions(highest, 1);
        else if (form.Opt(2).Value())
            position = form.UD.Value();
    });
    return position;
}

Long ArticleAssignment::Cat_AddArticles(Long CatID, Long StartOrder, const ItemList& Items, acbPanes Pane) {
    return hub_.errorFrame.function(
        u"Cat_AddArticles"_s, [&] { return addArticles(CatID, StartOrder, Items, Pane); }, 0);
}

Long ArticleAssignment::addArticles(Long category, Long startOrder, const ItemList& items, acbPanes pane) const {
    const Ref<dao::Recordset> table = hub_.state.ArtKatTable;
    const bool leavesPool = pane == acbPaneArticlePool && hub_.ui.menus.Item(u"KLVArt_UnCategorized").Checked();
    Long count = 0;
    Long order = startOrder;
    for (const Ref<ListItem>& item : items) {
        // 1.
        const Long article = ArticleID_FromListItem(*item, pane);
        // 2.
        if (Article_IsInCat(article, category)) continue;
        if (hub_.state.closed) break; // while the user read of a failure
        // 3.
        table->AddNew();
        table->setValue(u"Artikel-Schlüssel", article);
        table->setValue(u"Kategorie-Schlüssel", category);
        table->setValue(u"Order", order);
        table->setValue(u"LetzteÄnderung", Variant::date(clock().now()));
        table->Update();
        order = sumOfPositions(order, 1);
        // 4.
        if (leavesPool) hub_.ui.LVArt->ListItems().Remove(item->Index());
        // 5.
        ++count;
    }
    return count;
}

Long ArticleAssignment::Cat_DeleteArticles(Long CatID, const ItemList& Items) {
    return hub_.errorFrame.function(
        u"Cat_DeleteArticles"_s, [&] { return deleteArticles(CatID, Items); }, 0);
}

Long ArticleAssignment::deleteArticles(Long category, const ItemList& items) const {
    Long count = 0;
    {
        // 1.
        const Ref<dao::Recordset> rows =
            hub_.state.Backend->OpenRecordset(hub_.articlePanes->ListStatement(category, true), dao::dbOpenDynaset);
        if (rows->RecordCount() < 1) return 0;
        // 2.
        for (const Ref<ListItem>& item : items) {
            rows->FindFirst(ofArticle(ArticleID_FromListItem(*item, acbPaneArticleList)));
            if (rows->NoMatch()) continue;
            rows->Delete();
            ++count;
        }
    }
    // 3.
    if (count > 0) hub_.articleOrder->Cat_RenumberArticles(category, 0, 0);
    // 4.
    return count;
}

void ArticleAssignment::kLV_DeletePosition() {
    TransMark mark(hub_.state.Workspace);
    hub_.errorFrame.command(u"DeletePosition"_s, mark, [&] { deletePosition(mark); });
}

void ArticleAssignment::deletePosition(TransMark& mark) {
    const ListView& list = *hub_.ui.LV;
    // 1.
    const Ref<Node> node = hub_.ui.TV->SelectedItem();
    if (!node) return;
    const QString name = NameFromNodeText(node->Text());
    const Long category = node->Tag().toLong();
    ItemList items;
    const bool several = list.SelectedCount() > 1;
    bool areAll = false;
    Long followUp = 0;
    if (several) {
        // 2.
        const Long count = Article_SelectedArray(items, acbPaneArticleList);
        areAll = count == list.ListItems().Count();
        if (!isDeletionOfSeveralWanted(count, name)) return;
    } else {
        // 3.
        const Ref<ListItem> item = list.SelectedItem();
        if (!item) return;
        followUp = item->Index() - 1;
        if (followUp == 0 && list.ListItems().Count() >= 2) followUp = 1;
        items = {item};
        if (!isDeletionWanted(*item, name)) return;
    }
    if (hub_.state.closed) return;
    // 4.
    mark.begin();
    Cat_DeleteArticles(category, items);
    if (hub_.state.closed) return mark.rollbackIfOpen(); // while the user read of a failure
    mark.commit();
    hub_.state.Edited = true;
    // 5., 6.
    if (several)
        showWithoutSeveral(category, areAll);
    else
        showWithoutOne(category, followUp);
    // 7.
    if (!hub_.state.closed) hub_.selection->SetCategoryOfTree(category);
}

bool ArticleAssignment::isDeletionOfSeveralWanted(Long count, const QString& category) const {
    const Ref<ErrorHandler> handler = hub_.errorFrame.handler(); // the control may be closed while the user thinks
    const QString question = text(TextId::BrowserDeleteArticles, {QString::number(count), category});
    return handler->AskUser(question, vbYesNo | vbQuestion | vbDefaultButton2) == vbYes;
}

bool ArticleAssignment::isDeletionWanted(const ListItem& item, const QString& category) const {
    const Long article = ArticleID_FromListItem(item, acbPaneArticleList);
    return messageService().ShowCoded(deleteQuestion, vbYesNo | vbQuestion, {}, category, article) == vbYes;
}

void ArticleAssignment::showWithoutSeveral(Long category, bool wereAll) const {
    if (wereAll)
        hub_.articlePanes->ClearArticleList();
    else
        hub_.articlePanes->PopulateLV(category);
}

void ArticleAssignment::showWithoutOne(Long category, Long followUp) const {
    hub_.articlePanes->PopulateLV(category);
    if (hub_.state.closed) return;
    if (followUp < 1) return hub_.selection->SetSelectedArticle(0);
    const Ref<ListItem> item = hub_.ui.LV->ListItems().Item(followUp);
    hub_.ui.LV->setSelectedItem(item);
    hub_.selection->ListItemClick(*item);
}

} // namespace mkl
