#include "browser/ArticleActivation.h"

#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"

namespace mkl {

using namespace Qt::StringLiterals;

bool ArticleActivation::LVActivate(Long ArticleKey, acbPanes Pane, bool Active) {
    bool done = false;
    hub_.errorFrame.reader(u"LVActivate"_s, [&] {
        activate(ArticleKey, Pane, Active);
        // 4.
        hub_.state.Edited = true;
        done = true;
    });
    return done;
}

void ArticleActivation::activate(Long articleKey, acbPanes pane, bool active) {
    // 1.
    const Ref<dao::Recordset> articles = hub_.state.Backend->OpenRecordset(u"ARTIKEL"_s, dao::dbOpenTable);
    articles->setIndex(u"Artikel-Schlüssel"_s);
    articles->Seek(u"=", articleKey);
    // 2.
    if (articles->NoMatch()) {
        hub_.reportVanishedRecord();
        return;
    }
    // 3.
    articles->Edit();
    articles->setValue(u"Aktiv", active);
    articles->Update();
    hub_.rowRefresh->RefreshItem(articleKey, pane);
}

void ArticleActivation::kLV_Activate() {
    hub_.errorFrame.reader(u"Activate"_s, [this] {
        const bool active = offersActive(hub_.ui.menus.Item(u"kLV_Activate"));
        const Ref<ListItem> item = hub_.ui.LV->SelectedItem();
        const Long article = item ? articleOfListRow(*item) : 0;
        if (article > 0) LVActivate(article, acbPaneArticleList, active);
    });
}

void ArticleActivation::KLVArt_Activate() {
    hub_.errorFrame.reader(u"Activate"_s, [this] {
        const bool active = offersActive(hub_.ui.menus.Item(u"KLVArt_Activate"));
        const Ref<ListItem> item = hub_.ui.LVArt->SelectedItem();
        if (item) LVActivate(item->Tag().toLong(), acbPaneArticlePool, active);
    });
}

void ArticleActivation::kLV_ActivateAll() {
    hub_.errorFrame.reader(u"ActivateAll"_s, [this] { activateSelected(true); });
}

void ArticleActivation::kLV_DeActivateAll() {
    hub_.errorFrame.reader(u"DeActivateAll"_s, [this] { activateSelected(false); });
}

void ArticleActivation::activateSelected(bool active) {
    for (const Ref<ListItem>& row : hub_.ui.LV->SelectedItems()) {
        const Long article = articleOfListRow(*row);
        if (article > 0) LVActivate(article, acbPaneArticleList, active);
        if (hub_.state.closed) return; // while the user read of a failure
    }
}

} // namespace mkl
