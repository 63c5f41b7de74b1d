#pragma once
// The forms of a tree node's key and text. A node's text is data: commands read position and name back from it.
#include "base/Variant.h"

namespace mkl {

/// A position with at least three digits: 7 gives "007", 1234 "1234", Null "".
QString positionText(const Variant& order);

/// A whole number with at least that many digits; Null gives "".
QString zeroPadded(const Variant& number, qsizetype digits);

/// Position, " - ", name: "007 - Schrauben". A Null counts as an empty text.
QString nodeText(const Variant& order, const Variant& name);

/// "A-" and the category's key; a Null key gives "A-" alone.
QString nodeKey(const Variant& categoryKey);

/// The number before the first "-" of a node's text, 0 if there is none.
Long OrderFromNodeText(QStringView text);

/// What follows the first "-" of a node's text, without the blanks around it.
QString NameFromNodeText(QStringView text);

} // namespace mkl
