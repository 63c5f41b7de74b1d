#include "core/WindowTools.h"

#include "controls/Twips.h"

#include <QFrame>
#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace mkl {

namespace {

constexpr Integer firstPrintable = 32;
constexpr Integer deleteCharacter = 127;

int frameWidth(const QWidget* window) {
    const auto* frame = qobject_cast<const QFrame*>(window);
    return frame ? frame->frameWidth() : window->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, window);
}

QRect onScreen(const QWidget* window) {
    return {window->mapToGlobal(QPoint()), window->size()};
}

} // namespace

Single WindowTools::ListReserve(Long ScrollBars, bool WithFrame, const QWidget* Window) const {
    int pixels = ScrollBars * Window->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, Window);
    if (WithFrame) pixels += 2 * frameWidth(Window);
    return twipsX(pixels);
}

void WindowTools::FilterKey(Integer& KeyAscii, const QString& Allowed) const {
    const bool printable = KeyAscii >= firstPrintable && KeyAscii != deleteCharacter;
    if (printable && !Allowed.contains(QChar(KeyAscii))) KeyAscii = 0;
}

bool WindowTools::GetRectangle(const QWidget* Window, WindowRectangle& Rectangle, bool InTwips) const {
    if (!Window) return false;
    const QRect pixels = onScreen(Window);
    const Single scaleX = InTwips ? screen().TwipsPerPixelX() : 1;
    const Single scaleY = InTwips ? screen().TwipsPerPixelY() : 1;
    Rectangle.left = static_cast<Single>(pixels.x()) * scaleX;
    Rectangle.top = static_cast<Single>(pixels.y()) * scaleY;
    Rectangle.right = static_cast<Single>(pixels.x() + pixels.width()) * scaleX;
    Rectangle.bottom = static_cast<Single>(pixels.y() + pixels.height()) * scaleY;
    return true;
}

void WindowTools::CenterOver(const QWidget* Owner, QWidget* Form) const {
    const QScreen* screen = Owner ? Owner->screen() : Form->screen();
    const QRect available = screen->availableGeometry();
    QRect place(QPoint(), Form->frameSize());
    place.moveCenter(Owner ? onScreen(Owner).center() : available.center());
    place.moveLeft(std::max(available.left(), std::min(place.left(), available.right() + 1 - place.width())));
    place.moveTop(std::max(available.top(), std::min(place.top(), available.bottom() + 1 - place.height())));
    Form->move(place.topLeft());
}

} // namespace mkl
