#pragma once
// What the error object and the message service have in common.
#include "base/Variant.h"

namespace mkl {

/// The text of a code with both values put in; Null counts as empty.
QString messageText(Long code, const Variant& v1, const Variant& v2);

} // namespace mkl
