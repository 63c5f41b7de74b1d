#pragma once
// A user who works with the context menus of the browser, by mouse and by keys.
#include "desktop/DragWindow.h"

#include <QMenu>

namespace mkl::desktop {

class MenuWindow : public DragWindow {
protected:
    void SetUp() override;
    void TearDown() override;

    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    /// The names of the entries that the open menu shows; "-" for a separator.
    static QStringList entries();
    /// The same with grey entries in brackets and checked ones behind a "+".
    static QStringList states();

    /// Clicks with the right button, and waits for the menu of that name.
    static void openAt(const QPoint& onScreen, const QString& name);
    /// The same by keys.
    static void openBy(const QString& keys, const QString& name);
    static void closeMenu();

    /// Clicks on the entry of the open menu, by way of its submenu where it stands in one. The menu is gone then.
    static void clickEntry(const QString& name);
    /// Presses the keys one by one in the open menu.
    static void pressInMenu(const QStringList& keys);

    /// A point of the pane below its rows.
    static QPoint belowRows(const ItemView& pane);

    QStringList told_; ///< what the control told its host: "properties KEY in PANE", "quit"
};

} // namespace mkl::desktop
