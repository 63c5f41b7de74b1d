#include "browser/Population.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowserPrivate.h"

#include <QScopeGuard>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// What an article number is formatted with: a zero more than the highest key has digits.
QString numberPattern(Long highestKey) {
    return QString(QString::number(highestKey).size() + 1, u'0');
}

} // namespace

Long Population::Populate() {
    Long count = 0;
    const auto atTheEnd = qScopeGuard([&] { ErrorFrame::quietly([&] { hub_.progressDisplay->ShowProgress({}); }); });
    hub_.errorFrame.reader(u"Populate"_s, [&] { count = populate(); });
    return count;
}

Long Population::populate() {
    BrowserState& state = hub_.state;
    // 1.
    CloseArtKatTable();
    // 2.
    state.ArtKatTable = state.Backend->OpenRecordset(u"ARTKAT"_s, dao::dbOpenTable);
    state.ArtKatTable->setIndex(u"ArtKatID"_s);
    // 3., 4.
    state.ArticleNumberPattern = numberPattern(Article_MaxNo());
    hub_.ui.showHints();
    // 5.
    hub_.articlePanes->AdjustColumnWidths();
    // 6.
    if (state.ShowArticlePool) {
        if (!hub_.progressDisplay->ShowProgress(text(TextId::BrowserReadingArticles))) return 0;
        hub_.articlePanes->PopulateLVArt(false);
    }
    // 7.
    if (!hub_.progressDisplay->ShowProgress(text(TextId::BrowserReadingCategories))) return 0;
    return hub_.categoryTree->X_PopulateTV(false);
}

void Population::CloseArtKatTable() {
    Ref<dao::Recordset>& table = hub_.state.ArtKatTable;
    if (table) ErrorFrame::quietly([&] { table->Close(); });
    table.reset();
}

Long Population::Article_MaxNo() const {
    return hub_.errorFrame.function(
        u"Article_MaxNo"_s,
        [&] {
            const Ref<dao::Recordset> highest = hub_.state.Backend->OpenRecordset(
                u"SELECT Max(ARTIKEL.[Artikel-Schlüssel]) AS MaxKey FROM ARTIKEL;"_s, dao::dbOpenForwardOnly);
            if (highest->Eof()) return Long{10};
            return hub_.functionLibrary->StringTools()
                .DefaultValue(highest->value(u"MaxKey"), StringTools::IntegerType)
                .toLong();
        },
        0);
}

} // namespace mkl
