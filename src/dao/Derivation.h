#pragma once
#include "dao/Columns.h"
#include "dao/Constants.h"
#include "dao/Cursor.h"
#include "dao/SnapshotRows.h"
#include "jet/evaluation/SortOrder.h"

#include <QString>
#include <memory>

namespace dao {

/// Filter and Sort with which a record set was derived from another one. Both may be empty.
struct Derivation {
    QString filter;
    QString sort;
};
using Derivations = QList<Derivation>;

/// Those of the rows that pass the filter, in the order of sort; the reader is moved to them by number. Raises what
/// jet::Criterion and jet::SortOrder raise.
QList<qsizetype> chosenRows(const Derivation& derivation, const Columns& columns, jet::RowReader& reader,
                            QList<qsizetype> rows);

/// The rows of a snapshot that are chosen; they share its store.
std::shared_ptr<SnapshotRows> derivedRows(SnapshotRows& parent, const Derivation& derivation);
/// The statement run again, with all derivations on top.
std::shared_ptr<SnapshotRows> runAgain(const QuerySource& source, const Derivations& derivations);

/// The open type of a derived record set: 3219 for one that these rows do not offer, 5 for an unknown number.
Long derivedType(Long wanted, Long own);
/// Type 4 or 8, or 2 for rows that cannot be edited.
std::unique_ptr<Cursor> cursorOver(std::shared_ptr<SnapshotRows> rows, Long type, Derivations derivations);

} // namespace dao
