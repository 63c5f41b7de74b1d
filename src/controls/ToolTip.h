#pragma once
#include <QString>

namespace mkl {

/// A text as a tool tip that shows it as it stands and breaks a long one into lines. The toolkit takes a plain tool tip
/// for markup as soon as it looks like some.
inline QString plainToolTip(const QString& text) {
    return text.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

} // namespace mkl
