#include "browser/dialogs/DialogGeometry.h"

#include "controls/Extender.h"
#include "controls/Twips.h"

#include <QGroupBox>

namespace mkl {

void place(QWidget& control, Single left, Single top, Single width, Single height) {
    setLeft(control, left);
    setTop(control, top);
    setWidth(control, width);
    setHeight(control, height);
}

void place(QWidget& control, Single left, Single top) {
    place(control, left, top, naturalWidth(control), naturalHeight(control));
}

Single right(const QWidget& control) {
    return Left(control) + Width(control);
}

Single bottom(const QWidget& control) {
    return Top(control) + Height(control);
}

Single naturalWidth(const QWidget& control) {
    control.ensurePolished();
    return twipsX(control.sizeHint().width());
}

Single naturalHeight(const QWidget& control) {
    control.ensurePolished();
    return twipsY(control.sizeHint().height());
}

Single lineHeight(const QWidget& control) {
    return twipsY(control.fontMetrics().lineSpacing());
}

Single widthOfCharacters(const QWidget& control, int count) {
    return twipsX(control.fontMetrics().averageCharWidth() * count);
}

Single innerTop(const QGroupBox& frame) {
    return twipsY(frame.fontMetrics().height()) + rowGap / 2;
}

} // namespace mkl
