#include "browser/PaneLayout.h"

#include "base/Variant.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/PaneGeometry.h"
#include "controls/Extender.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Single smallestWidth = 50; // below it nothing is worth placing

void placeWidget(QWidget& widget, const PaneSpan& span, Single top, Single height) {
    setLeft(widget, static_cast<Single>(span.left));
    setTop(widget, top);
    setWidth(widget, static_cast<Single>(span.width));
    setHeight(widget, height);
}

} // namespace

void PaneLayout::ApplyVisibility() {
    const BrowserUi& ui = hub_.ui;
    const BrowserState& state = hub_.state;
    ui.SB->setVisible(state.ShowStatusBar);
    ui.lblStatus->setVisible(state.ShowStatusBar);
    ui.LVArt->setVisible(state.ShowArticlePool);
    ui.picSplitterArt->setVisible(state.ShowArticlePool);
    ui.SB->Panels(u"LVArt"_s).setVisible(state.ShowArticlePool);
    ui.LV->setVisible(state.ShowArticleList);
    ui.picSplitter->setVisible(state.ShowArticleList);
    ui.SB->Panels(u"LV"_s).setVisible(state.ShowArticleList);
    place();
}

void PaneLayout::place() {
    const BrowserUi& ui = hub_.ui;
    const BrowserState& state = hub_.state;
    const Single width = hub_.face.ScaleWidth();
    if (width < smallestWidth) return;

    const Single statusHeight = state.ShowStatusBar ? Height(*ui.SB) : 0;
    const Single paneHeight = hub_.face.ScaleHeight() - statusHeight;
    const PaneSpans spans =
        evenPaneSpans({.scaleWidth = width, .pool = state.ShowArticlePool, .list = state.ShowArticleList});
    placeWidget(*ui.LVArt, spans.pool, 0, paneHeight);
    placeWidget(*ui.picSplitterArt, spans.splitterArt, 0, paneHeight);
    placeWidget(*ui.TV, spans.tree, 0, paneHeight);
    placeWidget(*ui.picSplitter, spans.splitter, 0, paneHeight);
    placeWidget(*ui.LV, spans.list, 0, paneHeight);

    placeWidget(*ui.SB, {0, roundToLong(width)}, paneHeight, Height(*ui.SB));
    ui.SB->Panels(u"LVArt"_s).setWidth(static_cast<Single>(spans.pool.width));
    ui.SB->Panels(u"TV"_s).setWidth(static_cast<Single>(spans.tree.width));

    if (hub_.face.UserMode()) hub_.articlePanes->AdjustColumnWidths();
}

} // namespace mkl
