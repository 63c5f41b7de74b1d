#pragma once
// Places of controls on a form, in twips.
#include "base/types.h"

QT_BEGIN_NAMESPACE
class QGroupBox;
class QWidget;
QT_END_NAMESPACE

namespace mkl {

inline constexpr Single formMargin = 180; ///< between the edge of a form and what stands on it
inline constexpr Single rowGap = 120;     ///< between two rows of controls

void place(QWidget& control, Single left, Single top, Single width, Single height);
/// At that place in the size that the control asks for.
void place(QWidget& control, Single left, Single top);

Single right(const QWidget& control);  ///< right edge, relative to the parent
Single bottom(const QWidget& control); ///< lower edge, likewise

Single naturalWidth(const QWidget& control);
Single naturalHeight(const QWidget& control);
/// Height of a line of text in the control's font.
Single lineHeight(const QWidget& control);
/// Width of that many average characters of the control's font.
Single widthOfCharacters(const QWidget& control, int count);
/// Distance from the upper edge of a frame to what stands in it, below its title.
Single innerTop(const QGroupBox& frame);

} // namespace mkl
