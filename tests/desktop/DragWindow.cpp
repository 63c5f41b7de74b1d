#include "desktop/DragWindow.h"

#include <QCursor>

namespace mkl::desktop {

void DragWindow::SetUp() {
    EditingWindow::SetUp();
    for (const Ref<Node>& node : tree_->Nodes())
        node->setExpanded(true);
    tree_->scrollToTop();
    QApplication::processEvents();
}

// Nothing stays held for the next test.
void DragWindow::TearDown() {
    xdotool({u"keyup"_s, u"ctrl"_s, u"keyup"_s, u"shift"_s, u"mouseup"_s, u"1"_s, u"mouseup"_s, u"3"_s});
    // Where a press has closed a menu the release may be lost; only the next press tells how the buttons stand.
    const QPoint place = window_.mapToGlobal(QPoint(window_.width() / 2, window_.height() - 4));
    EXPECT_TRUE(waitUntil([&] {
        if (QGuiApplication::mouseButtons() == Qt::NoButton) return true;
        xdotool(toPoint(place) << u"click"_s << u"2"_s);
        return false;
    }));
}

QPoint DragWindow::middleOf(const char* name) const {
    const auto* const widget = browser().findChild<QWidget*>(QLatin1StringView(name));
    return browser().mapToGlobal(QPoint(widget->geometry().center().x(),
                                        std::clamp(widget->geometry().center().y(), 0, browser().height() - 10)));
}

void DragWindow::dragFrom(const QPoint& onScreen, const QString& heldKey) {
    place_ = onScreen;
    heldKey_ = heldKey;
    if (!heldKey.isEmpty()) xdotool({u"keydown"_s, heldKey});
    xdotool(toPoint(onScreen) << u"mousedown"_s << u"1"_s);
    ASSERT_TRUE(waitUntil(drags));
}

void DragWindow::moveTo(const QPoint& onScreen) {
    QStringList moves;
    for (int step = 1; step <= 5; ++step)
        moves << toPoint(place_ + (onScreen - place_) * step / 5) << u"sleep"_s << u"0.01"_s;
    xdotool(moves);
    place_ = onScreen;
    EXPECT_TRUE(waitUntil([&] { return QCursor::pos() == onScreen; }));
    QApplication::processEvents();
}

void DragWindow::release() {
    xdotool({u"mouseup"_s, u"1"_s});
    releaseKey();
}

void DragWindow::releaseKey() {
    if (!heldKey_.isEmpty()) xdotool({u"keyup"_s, std::exchange(heldKey_, {})});
}

QString DragWindow::icon() const {
    const QCursor* const cursor = QApplication::overrideCursor();
    if (!cursor) return u"-"_s;
    for (const Image* image : browser().findChildren<Image*>())
        if (image->Picture().cacheKey() == cursor->pixmap().cacheKey()) return image->objectName();
    return u"?"_s;
}

void DragWindow::expectIcon(const QString& name, const QString& picture) const {
    EXPECT_TRUE(waitUntil([&] { return icon() == name; }))
        << icon().toStdString() << " instead of " << name.toStdString();
    if (!picture.isEmpty()) keepPicture(picture);
}

void DragWindow::expectNothing() {
    EXPECT_TRUE(waitUntil([] { return !drags(); }));
    EXPECT_TRUE(waitUntil([this] { return line().isEmpty(); }));
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_FALSE(tree_->DropHighlight() || list().DropHighlight());
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}

QString DragWindow::everything() const {
    return stored(u"SELECT [Kategorie-Schlüssel] & '<' & Parent & '@' & [Order] FROM [ARTIKEL/KATEGORIEN] "
                  "ORDER BY [Kategorie-Schlüssel]"_s) +
           u" | "_s +
           stored(u"SELECT [Kategorie-Schlüssel] & ':' & [Artikel-Schlüssel] & '@' & [Order] FROM ARTKAT "
                  "ORDER BY [Kategorie-Schlüssel], [Order]"_s);
}

} // namespace mkl::desktop
