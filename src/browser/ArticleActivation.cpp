#include "browser/ArticleActivation.h"

#include "browser/ArtCatBrowserPrivate.h"

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

} // namespace mkl
