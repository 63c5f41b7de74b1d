#include "controls/Extender.h"

#include "controls/Twips.h"

#include <QVariant>
#include <QWidget>

#include <algorithm>

namespace mkl {

namespace {

/// One measure of a widget: kept in twips as it was set, together with the pixels that came of it.
struct Measure {
    const char* twips;
    const char* pixels;
};
constexpr Measure leftMeasure{"mklLeft", "mklLeftPixels"};
constexpr Measure topMeasure{"mklTop", "mklTopPixels"};
constexpr Measure widthMeasure{"mklWidth", "mklWidthPixels"};
constexpr Measure heightMeasure{"mklHeight", "mklHeightPixels"};

void keep(QWidget& widget, const Measure& measure, Single twips, int pixels) {
    widget.setProperty(measure.twips, twips);
    widget.setProperty(measure.pixels, pixels);
}

/// What was set, unless the widget has been moved since; then what its pixels say.
Single kept(const QWidget& widget, const Measure& measure, int pixels, Single converted) {
    const QVariant atSetting = widget.property(measure.pixels);
    return atSetting.isValid() && atSetting.toInt() == pixels ? widget.property(measure.twips).toFloat() : converted;
}

} // namespace

Single Left(const QWidget& widget) {
    return kept(widget, leftMeasure, widget.x(), twipsX(widget.x()));
}

Single Top(const QWidget& widget) {
    return kept(widget, topMeasure, widget.y(), twipsY(widget.y()));
}

Single Width(const QWidget& widget) {
    return kept(widget, widthMeasure, widget.width(), twipsX(widget.width()));
}

Single Height(const QWidget& widget) {
    return kept(widget, heightMeasure, widget.height(), twipsY(widget.height()));
}

void setLeft(QWidget& widget, Single twips) {
    widget.move(pixelsX(twips), widget.y());
    keep(widget, leftMeasure, twips, widget.x());
}

void setTop(QWidget& widget, Single twips) {
    widget.move(widget.x(), pixelsY(twips));
    keep(widget, topMeasure, twips, widget.y());
}

// The measure is kept before the resizing too, since handlers of the resize event may already read it.
void setWidth(QWidget& widget, Single twips) {
    const int pixels = std::max(0, pixelsX(twips));
    keep(widget, widthMeasure, twips, pixels);
    widget.resize(pixels, widget.height());
    keep(widget, widthMeasure, twips, widget.width());
}

void setHeight(QWidget& widget, Single twips) {
    const int pixels = std::max(0, pixelsY(twips));
    keep(widget, heightMeasure, twips, pixels);
    widget.resize(widget.width(), pixels);
    keep(widget, heightMeasure, twips, widget.height());
}

bool Visible(const QWidget& widget) {
    return !widget.isHidden();
}

void setVisible(QWidget& widget, bool visible) {
    widget.setVisible(visible);
}

} // namespace mkl
