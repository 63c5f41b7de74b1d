#pragma once
// Finding the catalogue's tables and columns in a source, by name and without regard to case.
#include "catalogue/RowSource.h"

namespace mkl {

/// A column of the source and the column of the catalogue that it feeds.
struct ColumnPair {
    int source = 0;
    int target = 0;
};

/// For each table of the catalogue its position among the source's tables. Raises 3011 for a missing table and 3049
/// for a doubled one; hands unknown tables to the sink.
QList<int> matchTables(const QStringList& sourceTables, RowSink& sink);

/// The known columns in the order of the source. Raises 3011 for a missing column and 3049 for a doubled one; hands
/// unknown columns to the sink.
QList<ColumnPair> matchColumns(const CatalogueTable& table, const QStringList& sourceColumns, RowSink& sink);

/// The targets of the pairs, as beginTable() takes them.
QList<int> targetsOf(const QList<ColumnPair>& pairs);

} // namespace mkl
