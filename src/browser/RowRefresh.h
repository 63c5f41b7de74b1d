#pragma once
#include "base/Ref.h"
#include "browser/ArtCatBrowserEnums.h"

namespace dao {
class Recordset;
}

namespace mkl {

class ArtCatBrowserPrivate;
class ListItem;

/// Showing anew what a row or a pane holds.
class RowRefresh {
public:
    explicit RowRefresh(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The row of that key in its place, and its twin in the other list. In the list pane the key is that of an
    /// assignment or, failing that, of an article; one that is neither is error 35601 for the caller. Every other
    /// failure is reported.
    void RefreshItem(Long ItemKey, acbPanes Pane);
    /// The whole pane.
    void RefreshPane(acbPanes Pane);

private:
    void refreshInFrame(void (RowRefresh::*refresh)(Long), Long key);
    void refreshPoolRow(Long articleKey);
    void refreshListRow(Long assignmentKey);
    void refreshNode(Long categoryKey);
    void refreshTwin(Long key, acbPanes pane);
    void refreshList();
    Long assignmentOf(Long key) const;
    Ref<dao::Recordset> sought(const QString& table, const QString& index, Long key) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
