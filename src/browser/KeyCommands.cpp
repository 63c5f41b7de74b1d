#include "browser/KeyCommands.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "controls/Extender.h"

#include <array>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

enum Keys : Integer { keyReturn = 13, keyF5 = 116, keyF6 = 117 };
enum Shifts : Integer { none = 0, shiftKey = 1, altKey = 4 };

// From left to right.
constexpr std::array panes{acbPaneArticlePool, acbPaneCategoryTree, acbPaneArticleList};

} // namespace

bool KeyCommands::run(Integer KeyCode, Integer Shift) {
    if (!hub_.face.UserMode()) return false;
    for (const acbPanes pane : panes)
        if (viewOf(pane).hasFocus()) return runOn(pane, KeyCode, Shift);
    return false;
}

bool KeyCommands::runOn(acbPanes pane, Integer keyCode, Integer shift) {
    bool done = false;
    hub_.errorFrame.boundary(u"KeyDown"_s, [&] {
        if (keyCode == keyF6 && (shift == none || shift == shiftKey)) done = goToPane(pane, shift == none ? 1 : -1);
        if (keyCode == keyF5 && shift == none) done = refresh(pane);
        if (keyCode == keyReturn && shift == altKey) done = showProperties(pane);
        done = done || hub_.editKeys->run(pane, keyCode, shift);
    });
    return done;
}

bool KeyCommands::goToPane(acbPanes from, int step) {
    const int count = static_cast<int>(panes.size());
    int place = from == acbPaneArticlePool ? 0 : from == acbPaneCategoryTree ? 1 : 2;
    for (int steps = 1; steps < count; ++steps) {
        place = (place + step + count) % count;
        ItemView& view = viewOf(panes[static_cast<size_t>(place)]);
        if (!Visible(view)) continue;
        view.setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

bool KeyCommands::refresh(acbPanes pane) {
    if (!hub_.state.ArtKatTable) return false;
    hub_.rowRefresh->RefreshPane(pane);
    return true;
}

bool KeyCommands::showProperties(acbPanes pane) {
    if (!menuOffers(hub_, pane, acbMenuProperties)) return false;
    if (pane == acbPaneCategoryTree)
        hub_.menuCommands->kTV_Properties();
    else if (pane == acbPaneArticlePool && hub_.ui.LVArt->SelectedCount() == 1)
        hub_.menuCommands->KLVArt_Properties();
    else if (pane == acbPaneArticleList && hub_.ui.LV->SelectedCount() <= 1)
        hub_.menuCommands->kLV_Properties();
    return true;
}

ItemView& KeyCommands::viewOf(acbPanes pane) const {
    switch (pane) {
    case acbPaneArticleList: return *hub_.ui.LV;
    case acbPaneCategoryTree: return *hub_.ui.TV;
    default: return *hub_.ui.LVArt;
    }
}

} // namespace mkl
