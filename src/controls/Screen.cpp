#include "controls/Screen.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>

namespace mkl {

namespace {

constexpr Single twipsPerPixel = 15;

Qt::CursorShape shapeOf(Long pointer) {
    switch (pointer) {
    case vbSizeWE: return Qt::SizeHorCursor;
    case vbHourglass: return Qt::WaitCursor;
    default: return Qt::ArrowCursor;
    }
}

class ApplicationScreen final : public Screen {
public:
    Single Width() const override { return static_cast<Single>(size().width()) * twipsPerPixel; }
    Single Height() const override { return static_cast<Single>(size().height()) * twipsPerPixel; }
    Single TwipsPerPixelX() const override { return twipsPerPixel; }
    Single TwipsPerPixelY() const override { return twipsPerPixel; }

    Long MousePointer() const override { return pointer_; }
    void setMousePointer(Long pointer) override {
        if (pointer == pointer_) return;
        if (pointer == vbDefault) {
            QApplication::restoreOverrideCursor();
        } else if (pointer_ == vbDefault) {
            QApplication::setOverrideCursor(shapeOf(pointer));
        } else {
            QApplication::changeOverrideCursor(shapeOf(pointer));
        }
        pointer_ = pointer;
    }

private:
    static QSize size() {
        const QScreen* primary = QGuiApplication::primaryScreen();
        return primary ? primary->size() : QSize();
    }

    Long pointer_ = vbDefault; // at most one override cursor is ours
};

ApplicationScreen applicationScreen;
Screen* current = &applicationScreen;

} // namespace

Screen& screen() {
    return *current;
}

Screen* setScreen(Screen* screen) {
    Screen* former = current;
    current = screen ? screen : &applicationScreen;
    return former;
}

} // namespace mkl
