#include "browser/ArticlePanes.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/NodeText.h"
#include "controls/Extender.h"
#include "controls/Screen.h"

namespace mkl {

namespace {
constexpr Single columnMargin = 100;
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
