#include "browser/PaneStatus.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/NodeText.h"
#include "controls/Screen.h"

#include <QScopeGuard>

namespace mkl {

using namespace Qt::StringLiterals;

void PaneStatus::ShowListStatus(Long CategoryKey) {
    const BrowserUi& ui = hub_.ui;
    const Ref<Node> selected = ui.TV->SelectedItem();
    if (!selected) return;
    const Long category = CategoryKey == 0 ? selected->Tag().toLong() : CategoryKey;
    ui.SB->Panels(u"LV"_s).setText(
        text(TextId::BrowserListStatus, {QString::number(ui.LV->ListItems().Count()),
                                         NameFromNodeText(selected->Text()), QString::number(category)}));
}

void PaneStatus::ShowPoolStatus(Long SelectedCount) {
    const auto pointer = qScopeGuard([former = screen().MousePointer()] { screen().setMousePointer(former); });
    screen().setMousePointer(vbHourglass);
    const ListView& pool = *hub_.ui.LVArt;
    const Ref<ListItem> selected = pool.SelectedItem();
    hub_.state.SelectedPoolArticle = selected ? selected->Tag().toLong() : 0;
    const Long count = SelectedCount == -1 ? PoolSelectionCount() : SelectedCount;
    hub_.ui.SB->Panels(u"LVArt"_s)
        .setText(text(TextId::BrowserPoolStatus, {QString::number(pool.ListItems().Count()), QString::number(count)}));
}

Long PaneStatus::PoolSelectionCount() const {
    return hub_.ui.LVArt->SelectedCount();
}

} // namespace mkl
