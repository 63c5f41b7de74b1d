#pragma once
#include "base/types.h"

#include <QPoint>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

QT_BEGIN_NAMESPACE
class QFrame;
class QWidget;
QT_END_NAMESPACE

namespace mkl {

/// One row of a context menu. With rows of its own it opens a submenu, and cannot be chosen itself.
struct PopupRow {
    QString name;    ///< under which the choice is told; also that of the action on screen
    QString caption; ///< "&" marks the access key; empty for a separator
    bool enabled = true;
    std::optional<bool> checked = {}; ///< none where it cannot be checked
    std::vector<PopupRow> rows = {};

    bool isSeparator() const { return caption.isEmpty(); }
};

/// A context menu. Separators that would lead, end it or follow each other do not show.
struct PopupMenu {
    QString name;
    QString accessibleName; ///< by which screen readers know it
    std::vector<PopupRow> rows;
};

/// Told the name of the row that the user has chosen. It is called from the event loop once the menu has gone, so it
/// may show forms and close the widget; not called where the user chose nothing or the widget has gone.
using PopupChoice = std::function<void(const QString& name)>;

/// Shows context menus. Replaceable, so that tests read them and choose.
class PopupRunner {
public:
    virtual ~PopupRunner() = default;
    /// Shows the menu over the widget, whose end is that of the menu, and returns at once. The point is one of the
    /// screen, in pixels.
    virtual void popUp(QWidget& over, const PopupMenu& menu, const QPoint& point, const PopupChoice& chosen) = 0;
};

/// The runner in force; real menus unless another was set.
PopupRunner& popupRunner();
/// Puts another runner in force and returns the former one; nullptr restores the menus. The caller keeps ownership.
PopupRunner* setPopupRunner(PopupRunner* runner);

/// The point of the screen at a place within the frame of a control, in twips.
QPoint popupPoint(const QFrame& control, Single X, Single Y);

} // namespace mkl
