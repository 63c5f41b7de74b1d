#pragma once
#include <QString>

namespace mkl {

/// The text with control characters (line ends, NUL, escape sequences, marks that turn the writing direction) spelled
/// out, so that a name stays on its line and cannot steer a terminal.
QString visibleText(const QString& text);

} // namespace mkl
