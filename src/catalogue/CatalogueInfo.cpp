#include "catalogue/CatalogueInfo.h"

#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueTables.h"
#include "catalogue/CategoryForest.h"
#include "dao/Workspace.h"

#include <QFileInfo>
#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

Variant valueOf(dao::Database& database, const QString& query) {
    return database.OpenRecordset(query, dao::dbOpenSnapshot)->value(0);
}

void addForest(CatalogueInfo& info, const CategoryForest& forest) {
    const auto& categories = forest.categories();
    for (const int root : forest.roots())
        info.roots.append(categories[root].key);
    const auto steps = forest.walk(forest.roots());
    for (const auto& step : steps) {
        if (step.level > info.categoriesPerLevel.size()) info.categoriesPerLevel.resize(step.level);
        ++info.categoriesPerLevel[step.level - 1];
    }
    info.unreachableCategories = categories.size() - steps.size();
    for (const Category& category : categories) {
        info.leaves += forest.childrenOf(category.key).isEmpty();
        info.activeCategories += category.active;
    }
    for (const auto& group : forest.siblingGroups())
        info.largestSiblingGroup = std::max<qint64>(info.largestSiblingGroup, group.size());
}

} // namespace

CatalogueInfo CatalogueInfo::of(dao::Database& database) {
    CatalogueInfo info;
    info.file = database.Name();
    if (!dao::DBEngine::isServer(info.file)) info.fileBytes = QFileInfo(info.file).size();
    info.updatable = database.Updatable();
    if (hasReplicaDigit(database)) info.replicaDigit = mkl::replicaDigit(database);
    for (const CatalogueTable& table : catalogueTables()) {
        const Variant rows = valueOf(database, u"SELECT Count(*) FROM ["_s + table.name + u']');
        info.rows.append({table.name, static_cast<qint64>(rows.toDouble())});
    }
    addForest(info, CategoryForest(database));
    info.activeArticles =
        static_cast<qint64>(valueOf(database, u"SELECT Count(*) FROM ARTIKEL WHERE [Aktiv]=-1"_s).toDouble());
    info.highestCategoryKey = valueOf(database, u"SELECT Max([Kategorie-Schlüssel]) FROM [ARTIKEL/KATEGORIEN]"_s);
    info.highestArticleKey = valueOf(database, u"SELECT Max([Artikel-Schlüssel]) FROM ARTIKEL"_s);
    info.highestAssignmentKey = valueOf(database, u"SELECT Max([ArtKatID]) FROM ARTKAT"_s);
    return info;
}

} // namespace mkl
