#pragma once
#include "browser/ArtCatBrowserEnums.h"
#include "controls/ItemView.h"

namespace mkl {

class ArtCatBrowserPrivate;
class ListView;
class Node;

/// From the press of the mouse to the drop: what is dragged, what lies under the mouse, and what the pointer shows. A
/// drag begins 200 ms after the press.
class DragDrop {
public:
    explicit DragDrop(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// A button was pressed on the pane.
    void MouseDown(acbPanes pane, Integer Button, Integer Shift, Single X, Single Y);
    void DragStart(Integer Shift);
    /// The time between press and drag is over.
    void DragTimer_Timer();
    /// The mouse moves over the pane during a drag.
    void DragOver(acbPanes pane, ItemView& Source, Single X, Single Y, Integer State);
    /// The press or the drag is over, however it went.
    void DragEnd();

    /// Whether the press has run the click logic of that node already; asked once.
    bool takeClick(const Node& node) const;

private:
    void pressList(ListView& list, Integer shift, Single x, Single y);
    void pressTree(Integer shift, Single x, Single y);
    void dragOverList(ItemView& source, Single x, Single y, Integer state);
    void dragOverTree(ItemView& source, Single x, Single y, Integer state);
    bool isTreeDropUseless(const Node& hit, Integer state) const;
    void DragIconForState(ItemView& Source) const;
    void forbid(ItemView& source) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
