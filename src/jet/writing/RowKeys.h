#pragma once
#include "jet/binding/Scope.h"
#include "jet/model/Target.h"

namespace jet {

/// A native column that helps to tell the rows of a source apart.
struct RowKey {
    QByteArray native;
    ColumnType type;
};

/// The columns that identify a row: primary key, else the engine's row identity; of a derived table all columns.
QList<RowKey> rowKeysOf(const Scope::Source& source, const Target& target);

} // namespace jet
