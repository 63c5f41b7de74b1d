#include "catalogue/CatalogueCheck.h"

#include "catalogue/CategoryForest.h"

#include <QMap>
#include <QSet>
#include <algorithm>
#include <map>
#include <vector>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

struct Assignment {
    Long key = 0;
    Variant article, category, order;
};

/// A row of a group whose positions are looked at.
struct Placed {
    Variant order;
    Long key = 0;
};

Variant variantOf(const std::optional<Long>& value) {
    return value ? Variant(*value) : Variant();
}

/// Adds positions that several rows share, none being one too; true if the positions have a gap otherwise.
bool findDoubled(const Variant& owner, const std::vector<Placed>& rows,
                 QList<CatalogueCheck::DoubledPosition>& doubled) {
    std::map<Long, QList<Long>> keys;
    QList<Long> without;
    for (const Placed& row : rows)
        (row.order.isNull() ? without : keys[row.order.toLong()]).append(row.key);
    if (without.size() > 1) doubled.append({owner, Variant(), without});
    bool dense = without.isEmpty();
    Long expected = 1;
    for (const auto& [position, holders] : keys) {
        dense = dense && position == expected++;
        if (holders.size() > 1) doubled.append({owner, Variant(position), holders});
    }
    return !dense;
}

void checkSiblings(CatalogueCheck& check, const CategoryForest& forest) {
    for (const auto& group : forest.siblingGroups()) {
        std::vector<Placed> rows;
        for (const int i : group)
            rows.push_back({variantOf(forest.categories()[i].order), forest.categories()[i].key});
        const Variant parent = variantOf(forest.categories()[group.first()].parent);
        if (findDoubled(parent, rows, check.siblingPositions)) check.siblingGaps.append(parent);
    }
}

void checkParents(CatalogueCheck& check, const CategoryForest& forest) {
    const auto& categories = forest.categories();
    for (const Category& category : categories)
        if (category.parent && forest.find(*category.parent) < 0)
            check.danglingParents.append({category.key, Variant(*category.parent)});
    std::ranges::sort(check.danglingParents, {}, &CatalogueCheck::Orphan::key);
    check.unreachableCategories = categories.size() - forest.walk(forest.roots()).size();
}

/// Follows the parents from every category; a walk that meets its own track has found a ring.
void checkRings(CatalogueCheck& check, const CategoryForest& forest) {
    const auto& categories = forest.categories();
    std::vector<int> track(categories.size(), 0); // number of the walk that passed here, 0 for none
    for (int start = 0; start < categories.size(); ++start) {
        int at = start;
        while (at >= 0 && track[at] == 0) {
            track[at] = start + 1;
            const auto& parent = categories[at].parent;
            at = parent ? forest.find(*parent) : -1;
        }
        if (at < 0 || track[at] != start + 1) continue;
        QList<Long> ring;
        const Long first = categories[at].key;
        do {
            ring.append(categories[at].key);
            at = forest.find(*categories[at].parent);
        } while (categories[at].key != first);
        std::ranges::rotate(ring, std::ranges::min_element(ring));
        check.rings.append(ring);
    }
    std::ranges::sort(check.rings, {}, [](const QList<Long>& ring) { return ring.first(); });
}

std::vector<Assignment> readAssignments(dao::Database& database) {
    std::vector<Assignment> assignments;
    const auto rows = database.OpenRecordset(
        u"SELECT [ArtKatID], [Artikel-Schlüssel], [Kategorie-Schlüssel], [Order] FROM ARTKAT ORDER BY [ArtKatID]"_s,
        dao::dbOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext())
        assignments.push_back({rows->value(0).toLong(), rows->value(1), rows->value(2), rows->value(3)});
    rows->Close();
    return assignments;
}

QSet<Long> readArticles(dao::Database& database) {
    QSet<Long> keys;
    const auto rows = database.OpenRecordset(u"SELECT [Artikel-Schlüssel] FROM ARTIKEL"_s, dao::dbOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext())
        keys.insert(rows->value(0).toLong());
    rows->Close();
    return keys;
}

void checkOrphans(CatalogueCheck& check, const std::vector<Assignment>& assignments, const CategoryForest& forest,
                  const QSet<Long>& articles) {
    for (const Assignment& row : assignments) {
        if (row.category.isNull() || forest.find(row.category.toLong()) < 0)
            check.missingCategories.append({row.key, row.category});
        if (row.article.isNull() || !articles.contains(row.article.toLong()))
            check.missingArticles.append({row.key, row.article});
    }
}

void checkPairs(CatalogueCheck& check, const std::vector<Assignment>& assignments) {
    std::map<std::pair<Long, Long>, QList<Long>> pairs;
    for (const Assignment& row : assignments)
        if (!row.category.isNull() && !row.article.isNull())
            pairs[{row.category.toLong(), row.article.toLong()}].append(row.key);
    for (const auto& [pair, keys] : pairs)
        if (keys.size() > 1) check.pairs.append({pair.second, pair.first, keys});
}

void checkArticlePositions(CatalogueCheck& check, const std::vector<Assignment>& assignments) {
    std::map<Long, std::vector<Placed>> groups;
    for (const Assignment& row : assignments)
        if (!row.category.isNull()) groups[row.category.toLong()].push_back({row.order, row.key});
    for (const auto& [category, rows] : groups)
        if (findDoubled(Variant(category), rows, check.articlePositions)) check.articleGaps.append(category);
}

} // namespace

bool CatalogueCheck::isDamaged() const {
    return !danglingParents.isEmpty() || !rings.isEmpty() || !siblingPositions.isEmpty() ||
           !articlePositions.isEmpty() || !pairs.isEmpty() || !missingCategories.isEmpty() ||
           !missingArticles.isEmpty();
}

CatalogueCheck CatalogueCheck::of(dao::Database& database) {
    CatalogueCheck check;
    const CategoryForest forest(database);
    checkParents(check, forest);
    checkRings(check, forest);
    checkSiblings(check, forest);
    const auto assignments = readAssignments(database);
    checkOrphans(check, assignments, forest, readArticles(database));
    checkPairs(check, assignments);
    checkArticlePositions(check, assignments);
    return check;
}

} // namespace mkl
