#pragma once
#include "browser/ArtCatBrowserEnums.h"

#include <QString>

namespace mkl {

class ArtCatBrowserPrivate;
class Node;

/// What helps during a drag where the host wants it (springOpenInterval): a closed node opens when the mouse rests on
/// it, and a line over the status bar says where a drop would land. It changes nothing of what a drop does.
class DragHints {
public:
    explicit DragHints(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The mouse moved over the pane, and the drag has reacted.
    void DragOver(acbPanes pane, Single X, Single Y, Integer State);
    /// The drag is over, however it went.
    void DragEnd();
    /// The mouse has rested.
    void SpringTimer_Timer();

private:
    void watch(Node* node);
    QString outcomeOnTree() const;
    QString outcomeOnList() const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
