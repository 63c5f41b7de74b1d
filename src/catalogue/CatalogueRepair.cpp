#include "catalogue/CatalogueRepair.h"

#include "base/Clock.h"
#include "base/DateTime.h"
#include "catalogue/Refusal.h"
#include "catalogue/RepairPlan.h"
#include "catalogue/WholeTransaction.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

using Row = RepairPlan::Row;

/// One of the two tables of a plan.
struct RepairedTable {
    QString table, key, owner;
};

QString literal(const std::optional<Long>& value) {
    return value ? QString::number(*value) : u"Null"_s;
}

QString comparison(const QString& column, const std::optional<Long>& value) {
    return value ? u"%1=%2"_s.arg(column).arg(*value) : column + u" Is Null"_s;
}

/// Stores a row that nobody has changed since it was read.
void store(dao::Database& database, const RepairedTable& names, const Row& row, const QString& now) {
    const QString condition = u" WHERE %1=%2 AND "_s.arg(names.key).arg(row.key) + comparison(names.owner, row.owner) +
                              u" AND "_s + comparison(u"[Order]"_s, row.order);
    const QString change = u"UPDATE %1 SET %2=%3, [Order]=%4, [LetzteÄnderung]=#%5#"_s.arg(
        names.table, names.owner, literal(row.newOwner), literal(row.newOrder), now);
    database.Execute((row.deleted ? u"DELETE FROM "_s + names.table : change) + condition, dao::dbFailOnError);
    if (database.RecordsAffected() != 1) throwError(refusal::ChangedByAnother);
}

void store(dao::Database& database, const RepairPlan& plan) {
    const QString now = isoFromDate(clock().now());
    for (const Row& row : plan.categories())
        if (row.isChanged())
            store(database, {u"[ARTIKEL/KATEGORIEN]"_s, u"[Kategorie-Schlüssel]"_s, u"[Parent]"_s}, row, now);
    for (const Row& row : plan.assignments())
        if (row.isChanged()) store(database, {u"ARTKAT"_s, u"[ArtKatID]"_s, u"[Kategorie-Schlüssel]"_s}, row, now);
}

/// Articles that do not exist may be left alone on purpose.
void requireSound(CatalogueCheck check, bool mayLackArticles) {
    if (mayLackArticles) check.missingArticles.clear();
    if (check.isDamaged()) refuse(refusal::Damaged, TextId::RepairIncomplete);
}

RepairReport repaired(dao::Database& database, const RepairOptions& options) {
    const CatalogueCheck found = CatalogueCheck::of(database);
    const RepairPlan plan(database, found, options);
    RepairReport report{plan.changes(), found};
    if (options.dryRun) return report;
    store(database, plan);
    if (!report.changes.isEmpty()) report.remaining = CatalogueCheck::of(database);
    requireSound(report.remaining, !options.deleteWithoutArticle);
    return report;
}

} // namespace

RepairReport repairCatalogue(dao::Workspace& workspace, dao::Database& database, const RepairOptions& options) {
    if (options.dryRun) return repaired(database, options);
    if (!database.Updatable()) throwError(refusal::ReadOnly);
    WholeTransaction transaction(workspace);
    RepairReport report = repaired(database, options);
    transaction.commit();
    return report;
}

} // namespace mkl
