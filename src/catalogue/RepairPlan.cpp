#include "catalogue/RepairPlan.h"

#include "catalogue/PositionMending.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

using Row = RepairPlan::Row;
using Kind = RepairChange::Kind;

std::optional<Long> optionalLong(const Variant& value) {
    return value.isNull() ? std::nullopt : std::optional(value.toLong());
}

std::optional<double> optionalDate(const Variant& value) {
    return value.isNull() ? std::nullopt : std::optional(value.toDate());
}

Variant variantOf(const std::optional<Long>& value) {
    return value ? Variant(*value) : Variant();
}

std::vector<Row> readRows(dao::Database& database, const QString& statement) {
    std::vector<Row> rows;
    const auto records = database.OpenRecordset(statement, dao::dbOpenForwardOnly);
    const bool haveArticle = records->FieldCount() > 4;
    for (; !records->Eof(); records->MoveNext()) {
        const auto owner = optionalLong(records->value(1)), order = optionalLong(records->value(2));
        const auto article = haveArticle ? optionalLong(records->value(4)) : std::nullopt;
        rows.push_back(
            {records->value(0).toLong(), owner, order, article, optionalDate(records->value(3)), owner, order});
    }
    records->Close();
    std::ranges::sort(rows, {}, &Row::key);
    return rows;
}

Row& rowOf(std::vector<Row>& rows, Long key) {
    return *std::ranges::lower_bound(rows, key, {}, &Row::key);
}

/// New roots last; otherwise as lists show them, without a position in front.
auto placeOf(const Row* row) {
    return std::tuple(row->arrival, row->order, row->changed, row->key);
}

/// Rows that stay by owner, nothing for the roots, each group in the order in which it is shown.
std::map<std::optional<Long>, std::vector<Row*>> groupsOf(std::vector<Row>& rows) {
    std::map<std::optional<Long>, std::vector<Row*>> groups;
    for (Row& row : rows)
        if (!row.deleted) groups[row.newOwner].push_back(&row);
    for (auto& [owner, group] : groups)
        std::ranges::sort(group, {}, placeOf);
    return groups;
}

Positions positionsOf(const std::vector<Row*>& group) {
    Positions positions;
    qint64 last = 0;
    for (const Row* row : group) {
        positions.push_back(row->arrival > 0 ? std::optional(last + 1) : std::optional<qint64>(row->order));
        last = std::max(last, positions.back().value_or(0));
    }
    return positions;
}

/// Positions that are as they should be stay, a single missing one too.
Positions settledPositions(const Positions& positions, bool dense) {
    if (!dense && !needMending(positions)) return positions;
    if (!dense) return mendedPositions(positions);
    Positions settled;
    for (qint64 row = 0; row < static_cast<qint64>(positions.size()); ++row)
        settled.push_back(row + 1);
    return settled;
}

void settle(const std::vector<Row*>& group, bool dense) {
    const Positions settled = settledPositions(positionsOf(group), dense);
    for (std::size_t i = 0; i < group.size(); ++i)
        group[i]->newOrder = settled[i] ? std::optional(static_cast<Long>(*settled[i])) : std::nullopt;
}

void settleAll(std::vector<Row>& rows, bool dense) {
    for (const auto& [owner, group] : groupsOf(rows))
        settle(group, dense);
}

void appendChanges(QList<RepairChange>& changes, const std::vector<Row>& rows, Kind kind) {
    const bool ofPositions = kind == Kind::CategoryPosition || kind == Kind::ArticlePosition;
    for (const Row& row : rows) {
        const bool meant = ofPositions ? !row.reason && row.order != row.newOrder : row.reason == kind;
        if (!meant) continue;
        changes.append({kind, row.key, variantOf(row.article), variantOf(row.owner), variantOf(row.order),
                        row.deleted ? Variant() : variantOf(row.newOrder)});
    }
}

} // namespace

RepairPlan::RepairPlan(dao::Database& database, const CatalogueCheck& found, const RepairOptions& options)
    : categories_(readRows(database, u"SELECT [Kategorie-Schlüssel], [Parent], [Order], [LetzteÄnderung] "
                                     "FROM [ARTIKEL/KATEGORIEN]"_s))
    , assignments_(readRows(database, u"SELECT [ArtKatID], [Kategorie-Schlüssel], [Order], [LetzteÄnderung], "
                                      "[Artikel-Schlüssel] FROM ARTKAT"_s)) {
    makeRoots(found);
    deleteAssignments(found, options.deleteWithoutArticle);
    settleAll(categories_, options.dense);
    settleAll(assignments_, options.dense);
}

void RepairPlan::makeRoots(const CatalogueCheck& found) {
    std::vector<Row*> roots;
    for (const CatalogueCheck::Orphan& orphan : found.danglingParents)
        roots.push_back(&rowOf(categories_, orphan.key));
    // 1. Children of one missing parent stay together, in their order.
    std::ranges::sort(roots, {}, [](const Row* row) { return std::tuple(row->owner, placeOf(row)); });
    for (Row* row : roots)
        row->reason = Kind::ParentMissing;
    // 2. Rings begin with their smallest key.
    for (const QList<Long>& ring : found.rings) {
        roots.push_back(&rowOf(categories_, ring.first()));
        roots.back()->reason = Kind::RingOpened;
    }
    int arrival = 0;
    for (Row* row : roots) {
        row->newOwner.reset();
        row->arrival = ++arrival;
    }
}

void RepairPlan::deleteAssignments(const CatalogueCheck& found, bool withoutArticle) {
    const auto remove = [this](Long key, Kind reason) {
        Row& row = rowOf(assignments_, key);
        if (row.deleted) return;
        row.deleted = true;
        row.reason = reason;
    };
    // 3. A row that goes for two reasons is told with the first one.
    for (const CatalogueCheck::Orphan& orphan : found.missingCategories)
        remove(orphan.key, Kind::CategoryMissing);
    for (const CatalogueCheck::DoubledPair& pair : found.pairs)
        for (const Long key : pair.keys)
            if (key != std::ranges::min(pair.keys)) remove(key, Kind::PairDoubled);
    if (!withoutArticle) return;
    for (const CatalogueCheck::Orphan& orphan : found.missingArticles)
        remove(orphan.key, Kind::ArticleMissing);
}

QList<RepairChange> RepairPlan::changes() const {
    QList<RepairChange> changes;
    for (const Kind kind : {Kind::ParentMissing, Kind::RingOpened})
        appendChanges(changes, categories_, kind);
    for (const Kind kind : {Kind::CategoryMissing, Kind::PairDoubled, Kind::ArticleMissing})
        appendChanges(changes, assignments_, kind);
    appendChanges(changes, categories_, Kind::CategoryPosition);
    appendChanges(changes, assignments_, Kind::ArticlePosition);
    return changes;
}

} // namespace mkl
