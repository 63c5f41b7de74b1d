#pragma once
#include "base/types.h"

#include <QString>

class QWidget;

namespace mkl {

class ArtCatBrowserPrivate;

/// The display of long reads: a progress bar and a text instead of the panes and the status bar.
class ProgressDisplay {
public:
    explicit ProgressDisplay(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Shows the text over the progress bar; an empty text restores panes and status bar. Serves the message queue.
    /// False if the control was closed meanwhile: the caller then touches nothing of it any more.
    bool ShowProgress(const QString& Text);

private:
    bool show(const QString& text);
    void restore();
    void placeBar();
    void placeLine(QWidget& widget, Single top);

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
