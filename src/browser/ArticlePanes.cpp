#include "browser/ArticlePanes.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "browser/KeptView.h"
#include "browser/NodeText.h"
#include "controls/Extender.h"
#include "controls/Screen.h"

#include <QScopeGuard>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Single columnMargin = 100;

void sortByFirstColumn(ListView& list) {
    list.setSorted(true);
    list.setSortKey(0);
}

} // namespace

void ArticlePanes::PopulateLV(Long CategoryKey) {
    // 1.
    if (hub_.state.ShowArticleList) readList(CategoryKey);
}

void ArticlePanes::readList(Long CategoryKey) {
    PaneFocus focus;
    const auto atTheEnd = qScopeGuard([&] {
        endList();
        focus.giveBack();
    });
    hub_.errorFrame.reader(u"PopulateLV"_s, [&] { fillList(CategoryKey, focus); });
}

void ArticlePanes::fillList(Long categoryKey, PaneFocus& focus) {
    ListView& list = *hub_.ui.LV;
    // 2.
    screen().setMousePointer(vbHourglass);
    const KeptView kept(hub_, list);
    const bool sameCategory = std::exchange(hub_.state.listCategory, categoryKey) == categoryKey;
    focus.hide({&list});
    // 3.
    hub_.changeNotice->readBegins(acbPaneArticleList);
    if (list.ListItems().Count() > 0) list.ListItems().Clear();
    // 4.
    const Ref<dao::Recordset> rows =
        hub_.state.Backend->OpenRecordset(ListStatement(categoryKey, true), dao::dbOpenSnapshot);
    // 5.
    if (!rows->Eof()) {
        const AssignedArticleRow row(rows, hub_.state.ArticleNumberPattern);
        for (; !rows->Eof(); rows->MoveNext()) {
            const Variant key = row.assignmentKey();
            const Ref<ListItem> item = list.ListItems().Add({}, rowKey(key), row.position());
            item->setTag(key);
            row.showInList(*item);
        }
    }
    // 6.
    sortByFirstColumn(list);
    if (sameCategory) kept.restore(list);
}

// 7.
void ArticlePanes::endList() const {
    ErrorFrame::quietly([] { screen().setMousePointer(vbDefault); });
    if (hub_.state.closed) return; // while the user read of the failure
    ErrorFrame::quietly([&] { hub_.ui.LV->setVisible(true); }, [&] { hub_.paneStatus->ShowListStatus(0); });
}

bool ArticlePanes::PopulateLVArt(bool ShowStatus) {
    bool hasRows = false;
    const auto atTheEnd = qScopeGuard([&] { endPool(ShowStatus); });
    hub_.errorFrame.reader(u"PopulateLVArt"_s, [&] { hasRows = fillPool(ShowStatus); });
    return hasRows;
}

bool ArticlePanes::fillPool(bool showStatus) {
    ListItemCollection& items = hub_.ui.LVArt->ListItems();
    // 1.
    screen().setMousePointer(vbHourglass);
    if (showStatus && !hub_.progressDisplay->ShowProgress(text(TextId::BrowserReadingArticles))) return false;
    // 2.
    hub_.changeNotice->readBegins(acbPaneArticlePool);
    if (items.Count() > 0) items.Clear();
    // 3.
    const Ref<dao::Recordset> rows = hub_.state.Backend->OpenRecordset(PoolStatement(), dao::dbOpenSnapshot);
    // 4.
    if (rows->RecordCount() == 0) return false;
    rows->MoveLast();
    hub_.ui.PB->setMax(rows->RecordCount());
    rows->MoveFirst();
    // 5.
    const ArticleRow row(rows, hub_.state.ArticleNumberPattern);
    for (; !rows->Eof(); rows->MoveNext()) {
        hub_.ui.PB->setValue(rows->AbsolutePosition() + 1);
        addPoolRow(row);
    }
    // 6.
    sortByFirstColumn(*hub_.ui.LVArt);
    // 7.
    if (items.Count() == 0) return false;
    const Ref<ListItem> first = items.Item(1);
    hub_.ui.LVArt->setSelectedItem(first);
    first->EnsureVisible();
    hub_.selection->PoolItemClick(*first);
    return true;
}

void ArticlePanes::addPoolRow(const ArticleRow& row) {
    const Variant key = row.articleKey();
    const Ref<ListItem> item = hub_.ui.LVArt->ListItems().Add({}, rowKey(key), row.number());
    item->setTag(key);
    row.showInPool(*item);
}

// 8.
void ArticlePanes::endPool(bool showStatus) {
    ErrorFrame::quietly(
        [&] {
            if (showStatus) hub_.progressDisplay->ShowProgress({});
        },
        [&] { screen().setMousePointer(vbDefault); });
}

void ArticlePanes::ClearArticleList() {
    hub_.ui.LV->ListItems().Clear();
    hub_.selection->SetSelectedArticle(0);
}

void ArticlePanes::sortBy(ListView& list, Long columnIndex) {
    list.setSortKey(columnIndex - 1);
    list.setSorted(true);
    if (const Ref<ListItem> selected = list.SelectedItem()) selected->EnsureVisible();
}

void ArticlePanes::AdjustColumnWidths() {
    const BrowserState& state = hub_.state;
    const QString& pattern = state.ArticleNumberPattern;
    if (pattern.isEmpty()) return;
    if (state.ShowArticlePool) {
        ListView& pool = *hub_.ui.LVArt;
        pool.ColumnHeaders().Item(1)->setWidth(numberWidth(pattern));
        fillWithLastColumn(pool);
    }
    if (state.ShowArticleList) {
        ListView& list = *hub_.ui.LV;
        list.ColumnHeaders().Item(1)->setWidth(numberWidth(positionText(0)));
        list.ColumnHeaders().Item(2)->setWidth(numberWidth(pattern));
        fillWithLastColumn(list);
    }
}

Single ArticlePanes::numberWidth(const QString& pattern) const {
    return iconRoom() + hub_.face.TextWidth(pattern) + columnMargin;
}

void ArticlePanes::fillWithLastColumn(ListView& list) const {
    const ColumnHeaderCollection& columns = list.ColumnHeaders();
    Single width = Width(list) - hub_.functionLibrary->WindowTools().ListReserve(1, true, &list) - columnMargin;
    for (Long column = 1; column < columns.Count(); ++column)
        width -= columns.Item(column)->Width();
    columns.Item(columns.Count())->setWidth(width);
}

} // namespace mkl
