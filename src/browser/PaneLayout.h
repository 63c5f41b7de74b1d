#pragma once
#include "browser/PaneGeometry.h"

#include <QString>

namespace mkl {

class ArtCatBrowserPrivate;
class ListView;

/// Where the panes stand, and which of them are on show.
class PaneLayout {
public:
    explicit PaneLayout(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Shows and hides panes and status bar as the Show properties say, and shares the width out anew.
    void ApplyVisibility();
    /// Another Show property: reads what is turned on and empty, shows or hides it, places what is left.
    void LetShowArticleList(bool ShowArticleList);
    void LetShowArticlePool(bool ShowArticlePool);
    void LetShowStatusBar(bool ShowStatusBar);

    /// The pane's share of the width in percent. A new one shows after PaneResize. A pane that does not exist has 0.
    double PaneWidth(Long Pane) const;
    void LetPaneWidth(Long Pane, double Percent);
    /// Places the panes in the widths that were set; the list takes up what they leave.
    void PaneResize();

    /// The control has another size.
    void resized();
    /// The resize pass: places everything as the splitters stand, and tells the host.
    void place();

    /// The mouse has drawn a splitter to X twips from its left edge: it follows within its limits, and the panes too.
    void drawSplitter(Single X);
    void drawSplitterArt(Single X);

    Long LeftCategoryTreeView() const; ///< left edge of the splitter before the tree
    Long LeftArticleListView() const;  ///< left edge of the splitter before the list

private:
    void CalcPaneWidths(bool Reset);
    void PlaceSplitters();
    bool mayReadForShow(bool former, bool show, const ListView& list) const;
    void showList() const;
    void showPool() const;
    void propertyChanged(const QString& name) const;
    void growToSmallestWidth();
    void placeStatusBar();
    PaneSetting setting() const;
    SplitterPlaces splitters() const;
    PaneWidths widths() const;
    void setWidths(const PaneWidths& widths);
    Long* widthOf(Long Pane) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
