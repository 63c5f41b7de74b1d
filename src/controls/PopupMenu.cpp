#include "controls/PopupMenu.h"

#include "controls/Twips.h"

#include <QFrame>
#include <QMenu>

namespace mkl {

namespace {

void fill(QMenu& menu, const std::vector<PopupRow>& rows);

void addSubmenu(QMenu& menu, const PopupRow& row) {
    QMenu* const submenu = menu.addMenu(row.caption);
    submenu->menuAction()->setObjectName(row.name);
    submenu->setAccessibleName(QString(row.caption).remove(u'&'));
    submenu->setEnabled(row.enabled);
    fill(*submenu, row.rows);
}

void addRow(QMenu& menu, const PopupRow& row) {
    if (!row.rows.empty()) return addSubmenu(menu, row);
    QAction* const action = row.isSeparator() ? menu.addSeparator() : menu.addAction(row.caption);
    action->setObjectName(row.name);
    action->setEnabled(row.enabled);
    action->setCheckable(row.checked.has_value());
    action->setChecked(row.checked.value_or(false));
}

void fill(QMenu& menu, const std::vector<PopupRow>& rows) {
    for (const PopupRow& row : rows)
        addRow(menu, row);
}

class MenuRunner final : public PopupRunner {
public:
    void popUp(QWidget& over, const PopupMenu& form, const QPoint& point, const PopupChoice& chosen) override {
        auto* const menu = new QMenu(&over);
        QObject::connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
        menu->setObjectName(form.name);
        menu->setAccessibleName(form.accessibleName);
        fill(*menu, form.rows);
        // A submenu's rows are told by the menu too. The menu itself does not outlive the choice.
        QObject::connect(menu, &QMenu::triggered, &over, [&over, chosen](const QAction* action) {
            QMetaObject::invokeMethod(
                &over, [chosen, name = action->objectName()] { chosen(name); }, Qt::QueuedConnection);
        });
        menu->popup(point);
    }
};

MenuRunner menuRunner;
PopupRunner* current = &menuRunner;

} // namespace

PopupRunner& popupRunner() {
    return *current;
}

PopupRunner* setPopupRunner(PopupRunner* runner) {
    PopupRunner* former = current;
    current = runner ? runner : &menuRunner;
    return former;
}

QPoint popupPoint(const QFrame& control, Single X, Single Y) {
    return control.mapToGlobal(control.contentsRect().topLeft() + QPoint(pixelsX(X), pixelsY(Y)));
}

} // namespace mkl
