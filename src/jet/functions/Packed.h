#pragma once
#include "base/Variant.h"

#include <QByteArrayView>

namespace jet {

/// A value in a form that keeps its type where an engine would lose it: what the engine itself tells apart stays as it
/// is, any other value becomes a text with a mark. For columns of which only the values know their types.
mkl::Variant packed(const mkl::Variant& value);
/// The value again.
mkl::Variant unpacked(const mkl::Variant& value);
/// Whether the text begins with the mark.
bool isPacked(QByteArrayView utf8);

} // namespace jet
