#pragma once
// A user who drags with the real mouse.
#include "controls/Image.h"
#include "controls/StatusBar.h"
#include "desktop/EditingWindow.h"

namespace mkl::desktop {

class DragWindow : public EditingWindow {
protected:
    void SetUp() override;
    void TearDown() override;

    static QStringList toPoint(const QPoint& onScreen) {
        return {u"mousemove"_s, QString::number(onScreen.x()), QString::number(onScreen.y())};
    }
    QPoint rowOf(const ListView& list, Long row) const { return BrowserWindow::rowOf(list, static_cast<int>(row)); }
    QPoint nodeAt(Long key) const { return textOf(*category(key)); }
    /// The middle of a constituent.
    QPoint middleOf(const char* name) const;

    /// Presses there, holding the key if there is one, and waits until the drag has begun.
    void dragFrom(const QPoint& onScreen, const QString& heldKey = {});
    /// Moves on in steps, as a hand does, until the pointer has arrived.
    void moveTo(const QPoint& onScreen);
    void release();
    /// Lets go of it in order to be asked.
    void releaseAndAnswer(const Answer& answer) {
        doAndAnswer([this] { release(); }, {answer});
    }
    void releaseKey();

    static bool drags() { return QApplication::overrideCursor() != nullptr; }
    /// The name of the picture that the pointer shows; "-" without a drag.
    QString icon() const;
    QString line() const { return browser().findChild<StatusBar*>(u"SB"_s)->Overlay(); }
    /// Waits for the picture, and keeps one of the screen under that name.
    void expectIcon(const QString& name, const QString& picture = {}) const;
    /// Nothing is left of the drag, and nobody is asked anything.
    void expectNothing();
    /// Everything that drags can change in the catalogue.
    QString everything() const;

private:
    QPoint place_;
    QString heldKey_;
};

} // namespace mkl::desktop
