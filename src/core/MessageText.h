#pragma once
// What the error object and the message service have in common.
#include "base/Variant.h"

namespace mkl {

/// The text of a code with both values put in; Null counts as empty.
QString messageText(Long code, const Variant& v1, const Variant& v2);

/// Shows a message box with the detail below the text, or the one of the two that is not empty.
Long showMessage(const QString& caption, const QString& message, const QString& detail, Long flags);

} // namespace mkl
