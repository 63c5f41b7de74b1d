#pragma once

namespace mkl {

class ArtCatBrowserPrivate;

/// Where the panes stand, and which of them are on show.
class PaneLayout {
public:
    explicit PaneLayout(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Shows and hides panes and status bar as the Show properties say, and places what is left.
    void ApplyVisibility();
    /// Places everything anew in the control's present size.
    void place();

private:
    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
