#pragma once
#include "controls/ListItem.h"

#include <Qt>

QT_BEGIN_NAMESPACE
class QMouseEvent;
QT_END_NAMESPACE

namespace mkl {

class ListView;

/// What mouse and keyboard select in a list with MultiSelect. A range goes from the anchor, which the last selection
/// without Shift has set. What a press would take away it takes at its release, since the press can also be the
/// beginning of a drag of the selected rows.
class ListSelection {
public:
    explicit ListSelection(ListView& list)
        : list_(list) {}

    /// A press on a row, or beside the rows (no item), and its release.
    void press(ListItem* item, const QMouseEvent& event);
    void release(const ListItem* item, const QMouseEvent& event);
    /// The press has become a drag: its release changes nothing.
    void forgetPress();

    /// A key moves the focus to the row.
    void walk(ListItem& item, Qt::KeyboardModifiers modifiers);
    /// The space bar on the row that has the focus.
    void space(ListItem& item, Qt::KeyboardModifiers modifiers);
    /// Selects the row alone, as a click does.
    void selectOnly(ListItem& item);

    /// Where the next range begins.
    void setAnchor(ListItem* item);
    /// The row is going.
    void forget(const ListItem& item);

private:
    enum class AtRelease { Nothing, SelectOnly, Unselect };

    void pressLeft(ListItem& item, Qt::KeyboardModifiers modifiers);
    void pressOther(ListItem& item, Qt::KeyboardModifiers modifiers);
    void selectNone();
    void selectRange(const ListItem& to, bool keepOthers);

    ListView& list_;
    Ref<ListItem> anchor_;
    Ref<ListItem> pressed_;
    AtRelease atRelease_ = AtRelease::Nothing;
};

} // namespace mkl
