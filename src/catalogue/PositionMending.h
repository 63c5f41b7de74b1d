#pragma once
// Positions of one group: the children of a category, or the articles in it.
#include <QtGlobal>
#include <optional>
#include <vector>

namespace mkl {

/// Positions as they stand, in the order in which the rows are shown; wider than Long, for one behind the last.
using Positions = std::vector<std::optional<qint64>>;

/// True where two rows share a position, where several have none, or where one is beyond the range of Long.
bool needMending(const Positions& positions);

/// Positions from 1 that rise from row to row: the rows keep their order, and as few as possible get another number.
Positions mendedPositions(const Positions& positions);

} // namespace mkl
