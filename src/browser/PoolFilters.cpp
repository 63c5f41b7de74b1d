#include "browser/PoolFilters.h"

#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"
#include "controls/Asker.h"
#include "controls/Screen.h"
#include "core/MessageService.h"

#include <QScopeGuard>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Coded messages.
constexpr Long noUncategorized = 1063;
constexpr Long noActive = 1064;
constexpr Long noInactive = 1069;

constexpr QStringView activeEntry = u"KLVArt_Active";
constexpr QStringView inactiveEntry = u"KLVArt_InActive";
constexpr QStringView markedEntry = u"KLVArt_Marked";
constexpr QStringView uncategorizedEntry = u"KLVArt_UnCategorized";

bool invert(MenuEntry& entry) {
    entry.setChecked(!entry.Checked());
    return entry.Checked();
}

} // namespace

void PoolFilters::KLVArt_Active() {
    hub_.errorFrame.reader(u"FilterActive"_s, [this] { showState(activeEntry, inactiveEntry, noActive); });
}

void PoolFilters::KLVArt_InActive() {
    hub_.errorFrame.reader(u"FilterInActive"_s, [this] { showState(inactiveEntry, activeEntry, noInactive); });
}

void PoolFilters::showState(QStringView entry, QStringView otherEntry, Long nothingFound) {
    MenuTable& menus = hub_.ui.menus;
    // 1., 2.
    if (invert(menus.Item(entry))) menus.Item(otherEntry).setChecked(false);
    // 3.
    menus.Item(markedEntry).setChecked(false);
    // 4.
    hub_.articlePanes->PopulateLVArt(true);
    // 5.
    turnOffIfEmpty(entry, nothingFound);
}

void PoolFilters::turnOffIfEmpty(QStringView entry, Long nothingFound) {
    if (hub_.state.closed || !hub_.ui.menus.Item(entry).Checked()) return;
    if (hub_.ui.LVArt->ListItems().Count() > 0) return;
    messageService().ShowCoded(nothingFound, vbCritical);
    if (hub_.state.closed) return; // while the user read
    hub_.ui.menus.Item(entry).setChecked(false);
    hub_.articlePanes->PopulateLVArt(true);
}

// Without a frame of its own: a failure is that of its caller.
void PoolFilters::KLVArt_UnCategorized() {
    invert(hub_.ui.menus.Item(uncategorizedEntry));
    hub_.ui.menus.Item(markedEntry).setChecked(false);
    hub_.articlePanes->PopulateLVArt(true);
    turnOffIfEmpty(uncategorizedEntry, noUncategorized);
}

void PoolFilters::KLVArt_Marked() {
    hub_.errorFrame.reader(u"MarkedOnly"_s, [this] { showMarkedOnly(); });
}

void PoolFilters::showMarkedOnly() {
    MenuEntry& entry = hub_.ui.menus.Item(markedEntry);
    if (entry.Checked()) {
        // 1.
        hub_.articlePanes->PopulateLVArt(true);
        if (hub_.state.closed) return;
    } else {
        // 2., 3.
        fillWithMarked();
        if (hub_.state.closed) return; // while the user read of a failure
        // 4.
        ListView& pool = *hub_.ui.LVArt;
        if (pool.ListItems().Count() > 0) {
            const Ref<ListItem> first = pool.ListItems().Item(1);
            pool.setSelectedItem(first);
            first->EnsureVisible();
        }
        hub_.paneStatus->ShowPoolStatus(-1);
    }
    // 5.
    invert(entry);
}

void PoolFilters::fillWithMarked() {
    ArticleAssignment::ItemList marked;
    if (hub_.articleAssignment->Article_SelectedArray(marked, acbPaneArticlePool) == 0) return;
    const auto pointer = qScopeGuard([former = screen().MousePointer()] { screen().setMousePointer(former); });
    screen().setMousePointer(vbHourglass);
    hub_.ui.LVArt->ListItems().Clear();
    const Ref<dao::Recordset> articles = hub_.state.Backend->OpenRecordset(u"ARTIKEL"_s, dao::dbOpenTable);
    articles->setIndex(u"PrimaryKey"_s);
    const ArticleRow row(articles, hub_.state.ArticleNumberPattern);
    for (const Ref<ListItem>& item : marked) {
        articles->Seek(u"=", item->Tag());
        if (!articles->NoMatch()) hub_.articlePanes->addPoolRow(row);
    }
}

} // namespace mkl
