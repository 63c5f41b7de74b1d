#include "browser/ProgressDisplay.h"

#include "base/EventPump.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "controls/Extender.h"

namespace mkl {

namespace {
constexpr Single labelGap = 100; // between label and progress bar
}

bool ProgressDisplay::ShowProgress(const QString& Text) {
    if (hub_.state.closed) return false;
    if (Text.isEmpty())
        restore();
    else if (!show(Text))
        return false;
    return hub_.serveQueue();
}

bool ProgressDisplay::show(const QString& text) {
    const BrowserUi& ui = hub_.ui;
    hub_.state.focus.hide({ui.TV, ui.LV, ui.LVArt});
    if (!hub_.serveQueue()) return false;
    if (hub_.state.ShowStatusBar) {
        ui.SB->setVisible(false);
        setHeight(*ui.PB, Height(*ui.SB));
        if (!hub_.serveQueue()) return false;
    }
    ui.lblStatus->setText(text);
    placeBar();
    hub_.changeNotice->show();
    return true;
}

void ProgressDisplay::placeBar() {
    const BrowserUi& ui = hub_.ui;
    const Single barTop = hub_.face.ScaleHeight() - Height(*ui.PB);
    placeLine(*ui.PB, barTop);
    ui.PB->setValue(ui.PB->Min());
    placeLine(*ui.lblStatus, barTop - Height(*ui.lblStatus) - labelGap);
}

void ProgressDisplay::placeLine(QWidget& widget, Single top) {
    setLeft(widget, 0);
    setTop(widget, top);
    setWidth(widget, hub_.face.ScaleWidth());
    widget.setVisible(true);
}

void ProgressDisplay::restore() {
    const BrowserUi& ui = hub_.ui;
    BrowserState& state = hub_.state;
    ui.PB->setVisible(false);
    ui.lblStatus->setVisible(false);
    if (state.ShowStatusBar) ui.SB->setVisible(true);
    ui.TV->setVisible(true);
    ui.LV->setVisible(state.ShowArticleList);
    ui.LVArt->setVisible(state.ShowArticlePool);
    state.focus.giveBack();
    hub_.changeNotice->show();
}

} // namespace mkl
