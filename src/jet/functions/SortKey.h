#pragma once
// Values of any type in one order, as an engine sorts what it stores: Null, numbers, texts and dates, binary data.
#include "base/Variant.h"

namespace jet {

struct SortKey {
    enum class Rank : quint8 { Null, Number, Text, Binary };

    Rank rank = Rank::Null;
    double number = 0;
    QByteArray bytes; ///< the sort key of a text, or the data
};

SortKey sortKeyOf(const mkl::Variant& value);
/// Negative, 0 or positive.
int compareSortKeys(const SortKey& a, const SortKey& b);

} // namespace jet
