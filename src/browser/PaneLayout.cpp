#include "browser/PaneLayout.h"

#include "base/Variant.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "controls/Extender.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

void placePane(QWidget& pane, Single left, Long width, Single height) {
    setLeft(pane, left);
    setTop(pane, 0);
    setWidth(pane, static_cast<Single>(width));
    setHeight(pane, height);
}

} // namespace

void PaneLayout::ApplyVisibility() {
    const BrowserUi& ui = hub_.ui;
    const BrowserState& state = hub_.state;
    ui.SB->setVisible(state.ShowStatusBar);
    ui.lblStatus->setVisible(state.ShowStatusBar);
    showPool();
    showList();
    CalcPaneWidths(true);
    place();
}

void PaneLayout::LetShowArticleList(bool ShowArticleList) {
    const BrowserUi& ui = hub_.ui;
    // 1.
    if (mayReadForShow(hub_.state.ShowArticleList, ShowArticleList, *ui.LV))
        hub_.articlePanes->readList(hub_.state.SelectedCategory);
    if (hub_.state.closed) return;
    // 2.
    hub_.state.ShowArticleList = ShowArticleList;
    showList();
    // 3.
    CalcPaneWidths(true);
    place();
    // 4.
    propertyChanged(u"ShowArticleList"_s);
}

// The other panes keep their splitters.
void PaneLayout::LetShowArticlePool(bool ShowArticlePool) {
    // 1.
    if (mayReadForShow(hub_.state.ShowArticlePool, ShowArticlePool, *hub_.ui.LVArt))
        hub_.articlePanes->PopulateLVArt(true);
    if (hub_.state.closed) return;
    // 2.
    hub_.state.ShowArticlePool = ShowArticlePool;
    showPool();
    // 3.
    place();
    // 4.
    propertyChanged(u"ShowArticlePool"_s);
}

void PaneLayout::LetShowStatusBar(bool ShowStatusBar) {
    hub_.state.ShowStatusBar = ShowStatusBar;
    hub_.ui.SB->setVisible(ShowStatusBar);
    hub_.ui.lblStatus->setVisible(ShowStatusBar);
    propertyChanged(u"ShowStatusBar"_s);
    if (hub_.state.closed) return;
    place();
    if (!hub_.state.closed && hub_.face.UserMode()) hub_.selection->SetCategoryOfTree(hub_.state.SelectedCategory);
}

// Before Populate nothing is read, whatever is switched.
bool PaneLayout::mayReadForShow(bool former, bool show, const ListView& list) const {
    const bool populated = bool(hub_.state.ArtKatTable);
    return show && !former && populated && hub_.face.UserMode() && list.ListItems().Count() == 0;
}

void PaneLayout::showList() const {
    const bool on = hub_.state.ShowArticleList;
    hub_.ui.LV->setVisible(on);
    hub_.ui.picSplitter->setVisible(on);
    hub_.ui.SB->Panels(u"LV"_s).setVisible(on);
}

void PaneLayout::showPool() const {
    const bool on = hub_.state.ShowArticlePool;
    hub_.ui.LVArt->setVisible(on);
    hub_.ui.picSplitterArt->setVisible(on);
    hub_.ui.SB->Panels(u"LVArt"_s).setVisible(on);
}

void PaneLayout::propertyChanged(const QString& name) const {
    if (!hub_.state.closed) Q_EMIT hub_.face.PropertyChanged(name);
}

double PaneLayout::PaneWidth(Long Pane) const {
    const Long* const width = widthOf(Pane);
    return width ? shareOfWidth(*width, setting()) : 0;
}

void PaneLayout::LetPaneWidth(Long Pane, double Percent) {
    if (Long* const width = widthOf(Pane)) *width = widthOfShare(Percent, setting());
}

void PaneLayout::PaneResize() {
    hub_.state.arranged = true;
    // 1., 2.
    hub_.state.ListWidth = listWidthToFill(widths(), setting(), Width(hub_.face));
    // 3.
    PlaceSplitters();
    place();
}

// Before its first size a control has only a toolkit's default one: what was shared out of that counts for nothing.
void PaneLayout::resized() {
    if (!std::exchange(hub_.state.arranged, true)) CalcPaneWidths(true);
    place();
}

void PaneLayout::place() {
    const BrowserUi& ui = hub_.ui;
    const BrowserState& state = hub_.state;
    // 1.
    if (hub_.face.ScaleWidth() < smallestLayoutWidth) return;
    growToSmallestWidth();
    if (state.closed) return;
    const PaneSetting setting = this->setting();
    // 2.
    const Single statusHeight = state.ShowStatusBar ? Height(*ui.SB) : 0;
    const Single height = static_cast<Single>(roundToLong(hub_.face.ScaleHeight())) - statusHeight;
    // 3.
    const bool pushedIn = Left(*ui.picSplitter) + splitterWidth >= setting.scaleWidth;
    setHeight(*ui.picSplitter, hub_.face.ScaleHeight() + splitterExtraHeight);
    if (!setting.list || pushedIn) setLeft(*ui.picSplitter, setting.scaleWidth - splitterWidth);
    // 4.
    setHeight(*ui.picSplitterArt, hub_.face.ScaleHeight() + splitterExtraHeight);
    // 5.
    CalcPaneWidths(false);
    // 6.
    if (setting.pool) placePane(*ui.LVArt, 0, state.PoolWidth, height);
    // 7.
    placePane(*ui.TV, setting.pool ? Left(*ui.picSplitterArt) + splitterWidth : 0, state.TreeWidth, height);
    // 8.
    if (setting.list) placePane(*ui.LV, Left(*ui.picSplitter) + splitterWidth, state.ListWidth, height);
    // 9.
    placeStatusBar();
    // 10.
    if (hub_.face.UserMode()) hub_.articlePanes->AdjustColumnWidths();
    // 11.
    Q_EMIT hub_.face.Resize(LeftCategoryTreeView(), LeftArticleListView());
}

// The growth is a resize of its own, with a pass within this one.
void PaneLayout::growToSmallestWidth() {
    if (hub_.face.ScaleWidth() < smallestControlWidth) setWidth(hub_.face, smallestControlWidth);
}

void PaneLayout::placeStatusBar() {
    StatusBar& bar = *hub_.ui.SB;
    setLeft(bar, 0);
    setTop(bar, hub_.face.ScaleHeight() - Height(bar));
    setWidth(bar, hub_.face.ScaleWidth());
    if (hub_.state.ShowArticlePool) bar.Panels(u"LVArt"_s).setWidth(Width(*hub_.ui.LVArt));
    bar.Panels(u"TV"_s).setWidth(Width(*hub_.ui.TV));
    hub_.changeNotice->place();
}

void PaneLayout::drawSplitter(Single X) {
    const Long place = roundToLong(Left(*hub_.ui.picSplitter) + X);
    const ListView& pool = *hub_.ui.LVArt;
    if (!mayPlaceSplitter(place, hub_.face.ScaleWidth(), Visible(pool) ? Width(pool) : 0)) return;
    setLeft(*hub_.ui.picSplitter, static_cast<Single>(place));
    CalcPaneWidths(false);
    this->place();
}

void PaneLayout::drawSplitterArt(Single X) {
    const Long place = roundToLong(Left(*hub_.ui.picSplitterArt) + X);
    if (!mayPlaceSplitterArt(place, Left(*hub_.ui.picSplitter))) return;
    setLeft(*hub_.ui.picSplitterArt, static_cast<Single>(place));
    CalcPaneWidths(false);
    this->place();
}

Long PaneLayout::LeftCategoryTreeView() const {
    return roundToLong(Left(*hub_.ui.picSplitterArt));
}

Long PaneLayout::LeftArticleListView() const {
    return roundToLong(Left(*hub_.ui.picSplitter));
}

void PaneLayout::CalcPaneWidths(bool Reset) {
    // 1.
    if (Reset) {
        setWidths(evenWidths(setting()));
        PlaceSplitters();
    }
    // 2.
    setWidths(widthsBetween(splitters(), setting()));
}

void PaneLayout::PlaceSplitters() {
    const SplitterPlaces places = splittersOf(widths(), setting(), splitters());
    setLeft(*hub_.ui.picSplitterArt, places.splitterArt);
    setLeft(*hub_.ui.picSplitter, places.splitter);
}

PaneSetting PaneLayout::setting() const {
    return {
        .scaleWidth = hub_.face.ScaleWidth(), .pool = hub_.state.ShowArticlePool, .list = hub_.state.ShowArticleList};
}

SplitterPlaces PaneLayout::splitters() const {
    return {.splitterArt = Left(*hub_.ui.picSplitterArt), .splitter = Left(*hub_.ui.picSplitter)};
}

PaneWidths PaneLayout::widths() const {
    return {hub_.state.PoolWidth, hub_.state.TreeWidth, hub_.state.ListWidth};
}

void PaneLayout::setWidths(const PaneWidths& widths) {
    hub_.state.PoolWidth = widths.pool;
    hub_.state.TreeWidth = widths.tree;
    hub_.state.ListWidth = widths.list;
}

Long* PaneLayout::widthOf(Long Pane) const {
    switch (Pane) {
    case acbPaneArticlePool: return &hub_.state.PoolWidth;
    case acbPaneArticleList: return &hub_.state.ListWidth;
    case acbPaneCategoryTree: return &hub_.state.TreeWidth;
    default: return nullptr;
    }
}

} // namespace mkl
