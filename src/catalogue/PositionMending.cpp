#include "catalogue/PositionMending.h"

#include "base/types.h"

#include <algorithm>
#include <functional>
#include <limits>

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
/// other, so these are a longest sequence of rising slacks; of several such sequences the one with the earliest rows.
std::vector<bool> keptRows(const Positions& positions) {
    const auto count = static_cast<qint64>(positions.size());
    std::vector<qint64> starts; // per length the largest slack with which a sequence of it begins
    std::vector<std::size_t> lengths(positions.size(), 0);
    for (qint64 row = count - 1; row >= 0; --row) {
        const auto slack = slackOf(positions, row);
        if (!slack) continue;
        const auto place = std::ranges::upper_bound(starts, *slack, std::ranges::greater());
        lengths[row] = place - starts.begin() + 1;
        if (place == starts.end())
            starts.push_back(*slack);
        else
            *place = *slack;
    }
    std::vector<bool> kept(positions.size(), false);
    std::size_t missing = starts.size();
    qint64 last = 0;
    for (qint64 row = 0; row < count && missing > 0; ++row) {
        const auto slack = slackOf(positions, row);
        if (!slack || lengths[row] < missing || *slack < last) continue;
        kept[row] = true;
        last = *slack;
        --missing;
    }
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
