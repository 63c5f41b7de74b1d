#include "desktop/MenuWindow.h"

namespace mkl::desktop {

namespace {

void waitForMenu(const QString& name) {
    const auto isOpen = [&] {
        const auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu && menu->isVisible() && menu->objectName() == name;
    };
    ASSERT_TRUE(waitUntil(isOpen)) << name.toStdString();
}

QAction* entryOf(const QMenu& menu, const QString& name) {
    for (QAction* const entry : menu.actions())
        if (entry->objectName() == name) return entry;
    return nullptr;
}

// The submenu of the menu that holds the entry.
QAction* wayTo(const QMenu& menu, const QString& name) {
    for (QAction* const entry : menu.actions())
        if (entry->menu() && entryOf(*entry->menu(), name)) return entry;
    return nullptr;
}

void clickOn(const QMenu& menu, QAction* entry) {
    click(menu.mapToGlobal(menu.actionGeometry(entry).center()));
}

} // namespace

void MenuWindow::SetUp() {
    QGuiApplication::setQuitOnLastWindowClosed(false); // the next test has a window again
    DragWindow::SetUp();
    QObject::connect(&browser(), &ArtCatBrowser::MenuPropertiesClick, &window_,
                     [this](Long key, acbPanes pane) { told_ += u"properties %1 in %2"_s.arg(key).arg(pane); });
    QObject::connect(&browser(), &ArtCatBrowser::Quit, &window_, [this] { told_ += u"quit"_s; });
}

void MenuWindow::TearDown() {
    closeMenu();
    DragWindow::TearDown();
}

QStringList MenuWindow::entries() {
    QStringList names;
    if (!menu()) return names;
    for (QAction* const entry : menu()->actions())
        if (!menu()->actionGeometry(entry).isEmpty()) names += entry->isSeparator() ? u"-"_s : entry->objectName();
    return names;
}

QStringList MenuWindow::states() {
    QStringList names;
    if (!menu()) return names;
    for (const QAction* const entry : menu()->actions()) {
        if (entry->isSeparator()) continue;
        const QString name = entry->isEnabled() ? entry->objectName() : u'(' + entry->objectName() + u')';
        names += entry->isChecked() ? u'+' + name : name;
    }
    return names;
}

void MenuWindow::openAt(const QPoint& onScreen, const QString& name) {
    xdotool({u"mousemove"_s, QString::number(onScreen.x()), QString::number(onScreen.y()), u"click"_s, u"3"_s});
    waitForMenu(name);
}

void MenuWindow::openBy(const QString& keys, const QString& name) {
    press(keys);
    waitForMenu(name);
}

void MenuWindow::closeMenu() {
    while (menu()) {
        const QMenu* const open = menu();
        press(u"Escape"_s);
        ASSERT_TRUE(waitUntil([&] { return menu() != open; }));
    }
}

void MenuWindow::clickEntry(const QString& name) {
    QMenu* const top = menu();
    ASSERT_NE(top, nullptr);
    if (QAction* const entry = entryOf(*top, name)) {
        clickOn(*top, entry);
    } else {
        QAction* const way = wayTo(*top, name);
        ASSERT_NE(way, nullptr) << name.toStdString();
        clickOn(*top, way);
        ASSERT_TRUE(waitUntil([&] { return way->menu()->isVisible(); }));
        clickOn(*way->menu(), entryOf(*way->menu(), name));
    }
    EXPECT_TRUE(waitUntil([] { return !menu(); })) << name.toStdString();
}

void MenuWindow::pressInMenu(const QStringList& keys) {
    for (const QString& each : keys) {
        const QMenu* const open = menu();
        press(each);
        const bool isTaken = waitUntil([&] { return menu() != open; });
        EXPECT_TRUE(isTaken) << each.toStdString();
        if (isTaken) continue;
        while (QMenu* const left = menu()) // it would wait for ever
            left->close();
        return;
    }
}

QPoint MenuWindow::belowRows(const ItemView& pane) {
    const QRect inside = pane.viewport()->rect();
    return pane.viewport()->mapToGlobal(QPoint(inside.center().x(), inside.bottom() - 6));
}

} // namespace mkl::desktop
