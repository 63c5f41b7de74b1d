// The statements behind the two article lists.
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticlePanes.h"
#include "core/CatalogQueries.h"

namespace mkl {

using namespace Qt::StringLiterals;

QString ArticlePanes::ListStatement(Long CategoryKey, bool UseFilter) const {
    QString criteria = u"[ARTKAT].[Kategorie-Schlüssel]="_s + QString::number(CategoryKey);
    if (const QString& filter = hub_.state.Filter[acbPaneArticleList]; UseFilter && !filter.isEmpty())
        appendCriterion(criteria, filter);
    return hub_.functionLibrary->SqlTools().InsertCriteria(catalogQueries().ArticlesOfCategory(), criteria);
}

QString ArticlePanes::PoolStatement() const {
    const SqlTools& tools = hub_.functionLibrary->SqlTools();
    const QString& filter = hub_.state.Filter[acbPaneArticlePool];
    const QString& workgroup = hub_.state.WorkgroupFilter;
    if (hub_.ui.menus.Item(u"KLVArt_UnCategorized").Checked()) {
        QString criteria =
            u"(ARTKAT.[Artikel-Schlüssel] Is Null) AND (ARTIKEL.[Absender-Schlüssel] "_s + workgroup + u')';
        appendActiveCriteria(criteria);
        if (!filter.isEmpty()) appendCriterion(criteria, filter);
        return tools.InsertCriteria(catalogQueries().ArticlePool(), criteria);
    }
    QString criteria = filter;
    appendCriterion(criteria, u"[Absender-Schlüssel] "_s + workgroup);
    appendActiveCriteria(criteria);
    return tools.BuildSelect(u"ARTIKEL"_s, criteria, u"[Artikel-Schlüssel]"_s, false);
}

void ArticlePanes::appendActiveCriteria(QString& criteria) const {
    const MenuTable& menus = hub_.ui.menus;
    if (menus.Item(u"KLVArt_Active").Checked()) appendCriterion(criteria, u"[Aktiv]=-1"_s);
    if (menus.Item(u"KLVArt_InActive").Checked()) appendCriterion(criteria, u"[Aktiv]=0"_s);
}

void ArticlePanes::appendCriterion(QString& criteria, const QString& clause) const {
    hub_.functionLibrary->StringTools().AppendCriterion(criteria, clause, u" AND "_s, true);
}

} // namespace mkl
