#include "jet/functions/SortKey.h"

#include "base/DateTime.h"
#include "jet/functions/Collation.h"

namespace jet {

using Type = mkl::Variant::Type;

SortKey sortKeyOf(const mkl::Variant& value) {
    switch (value.type()) {
    case Type::Null: return {};
    case Type::Text: return {SortKey::Rank::Text, 0, sortKey(value.toText())};
    case Type::Date: return {SortKey::Rank::Text, 0, sortKey(mkl::isoFromDate(value.toDouble()))};
    case Type::Binary: return {SortKey::Rank::Binary, 0, value.toBinary()};
    default: return {SortKey::Rank::Number, value.toDouble(), {}};
    }
}

int compareSortKeys(const SortKey& a, const SortKey& b) {
    if (a.rank != b.rank) return a.rank < b.rank ? -1 : 1;
    if (a.rank == SortKey::Rank::Number) return a.number < b.number ? -1 : a.number > b.number;
    return a.bytes.compare(b.bytes);
}

} // namespace jet
