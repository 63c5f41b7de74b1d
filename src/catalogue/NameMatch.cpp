#include "catalogue/NameMatch.h"

#include "catalogue/Refusal.h"

#include <algorithm>

namespace mkl {

QList<int> matchTables(const QStringList& sourceTables, RowSink& sink) {
    const auto& tables = catalogueTables();
    QList<int> positions(tables.size(), -1);
    for (int source = 0; source < sourceTables.size(); ++source) {
        const int target = catalogueTableIndex(sourceTables[source]);
        if (target < 0)
            sink.passOverTable(sourceTables[source]);
        else if (positions[target] >= 0)
            refuse(refusal::Damaged, TextId::ImportTableDoubled, {tables[target].name});
        else
            positions[target] = source;
    }
    const auto missing = positions.indexOf(-1);
    if (missing >= 0) refuse(refusal::Missing, TextId::CatalogueTableMissing, {tables[missing].name});
    return positions;
}

QList<ColumnPair> matchColumns(const CatalogueTable& table, const QStringList& sourceColumns, RowSink& sink) {
    QList<ColumnPair> pairs;
    QList<bool> found(table.columns.size(), false);
    for (int source = 0; source < sourceColumns.size(); ++source) {
        const int target = table.columnIndex(sourceColumns[source]);
        if (target < 0) {
            sink.passOverColumn(table.name, sourceColumns[source]);
            continue;
        }
        const QString title = columnTitle(table.name, table.columns[target].name);
        if (found[target]) refuse(refusal::Damaged, TextId::ImportColumnDoubled, {title});
        found[target] = true;
        pairs.append({source, target});
    }
    for (int target = 0; target < table.columns.size(); ++target)
        if (!found[target] && table.columns[target].required)
            refuse(refusal::Missing, TextId::CatalogueColumnMissing,
                   {columnTitle(table.name, table.columns[target].name)});
    return pairs;
}

QList<int> targetsOf(const QList<ColumnPair>& pairs) {
    QList<int> targets;
    targets.reserve(pairs.size());
    for (const ColumnPair& pair : pairs)
        targets.append(pair.target);
    return targets;
}

} // namespace mkl
