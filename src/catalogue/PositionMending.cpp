#include "catalogue/PositionMending.h"

#include "base/types.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace mkl {

namespace {

constexpr qint64 highest = std::numeric_limits<Long>::max();

/// How far a row stands behind where it would stand without gaps; nothing where it cannot keep its position because
/// the rows in front of it or behind it would find no room.
std::optional<qint64> slackOf(const Positions& positions, qint64 row) {
    const auto& position = positions[row];
    const qint64 rowsBehind = static_cast<qint64>(positions.size()) - row - 1;
    if (!position || *position < row + 1 || *position + rowsBehind > highest) return std::nullopt;
    return *position - row;
}

/// The rows that keep their positions. Two rows can both keep theirs where the slack does not fall from one to the
/// other, so these are a longest sequence of rising slacks.
std::vector<bool> keptRows(const Positions& positions) {
    const auto count = static_cast<qint64>(positions.size());
    std::vector<std::pair<qint64, qint64>> ends; // of the best sequence of each length: slack and row
    std::vector<qint64> before(positions.size(), -1);
    for (qint64 row = 0; row < count; ++row) {
        const auto slack = slackOf(positions, row);
        if (!slack) continue;
        const auto place =
            std::ranges::upper_bound(ends, *slack, {}, [](const std::pair<qint64, qint64>& end) { return end.first; });
        before[row] = place == ends.begin() ? -1 : std::prev(place)->second;
        if (place == ends.end())
            ends.emplace_back(*slack, row);
        else
            *place = {*slack, row};
    }
    std::vector<bool> kept(positions.size(), false);
    for (qint64 row = ends.empty() ? -1 : ends.back().second; row >= 0; row = before[row])
        kept[row] = true;
    return kept;
}

} // namespace

bool needMending(const Positions& positions) {
    std::vector<qint64> numbers;
    for (const auto& position : positions)
        if (position) numbers.push_back(*position);
    if (positions.size() > numbers.size() + 1) return true;
    std::ranges::sort(numbers);
    return std::ranges::adjacent_find(numbers) != numbers.end() || (!numbers.empty() && numbers.back() > highest);
}

Positions mendedPositions(const Positions& positions) {
    const std::vector<bool> kept = keptRows(positions);
    Positions mended;
    qint64 last = 0;
    for (std::size_t row = 0; row < positions.size(); ++row) {
        last = kept[row] ? *positions[row] : last + 1;
        mended.emplace_back(last);
    }
    return mended;
}

} // namespace mkl
