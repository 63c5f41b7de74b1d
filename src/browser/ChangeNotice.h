#pragma once
#include "browser/ArtCatBrowserEnums.h"

namespace mkl {

class ArtCatBrowserPrivate;

/// Says, where the host wants it (changeNotice), that others have changed the catalogue since the panes were read, or
/// that its server is out of reach, and offers to read again. It never reads by itself.
class ChangeNotice {
public:
    explicit ChangeNotice(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    void LetChangeNotice(bool changeNotice);
    /// Looks whether there is something to say, unless the user or the control is in the middle of something.
    void NoticeTimer_Timer();
    /// The pane is about to be read: what it then shows is as new as can be.
    void readBegins(acbPanes pane);
    /// Shows what there is to say, or nothing: not during a read that hides the panes.
    void show();
    /// Puts the line to its place, over the end of the status bar.
    void place();
    /// The user wants to read again.
    void refresh();

private:
    bool isBusy() const;
    void look();
    bool isOutdated() const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
