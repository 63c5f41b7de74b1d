#include "browser/PaneGeometry.h"

#include "base/RunTimeError.h"
#include "base/Variant.h"

namespace mkl {

namespace {

double usableWidth(const PaneSetting& setting) {
    return setting.scaleWidth - (setting.pool ? 2 : 1) * splitterWidth;
}

} // namespace

PaneWidths evenWidths(const PaneSetting& setting) {
    const Long share = roundToLong(setting.scaleWidth / (1 + setting.pool + setting.list));
    return {setting.pool ? share : 0, share, setting.list ? share : 0};
}

SplitterPlaces splittersOf(const PaneWidths& widths, const PaneSetting& setting, const SplitterPlaces& former) {
    if (!setting.pool) return {former.splitterArt, static_cast<Single>(widths.tree)};
    return {static_cast<Single>(widths.pool), static_cast<Single>(splitterWidth + widths.pool + widths.tree)};
}

PaneWidths widthsBetween(const SplitterPlaces& splitters, const PaneSetting& setting) {
    const Single treeLeft = setting.pool ? splitters.splitterArt + splitterWidth : 0;
    // Without the pool the tree ends at the list's splitter, be the list on or off.
    const Single treeRight = setting.pool && !setting.list ? setting.scaleWidth : splitters.splitter;
    PaneWidths widths;
    if (setting.list) widths.list = roundToLong(setting.scaleWidth - (splitters.splitter + splitterWidth));
    if (setting.pool) widths.pool = roundToLong(splitters.splitterArt);
    widths.tree = roundToLong(treeRight - treeLeft);
    return widths;
}

Long widthOfShare(double percent, const PaneSetting& setting) {
    return roundToLong(usableWidth(setting) * percent / 100);
}

double shareOfWidth(Long width, const PaneSetting& setting) {
    const double usable = usableWidth(setting);
    if (usable == 0) throwError(err::DivisionByZero);
    return 100 / usable * width;
}

Long listWidthToFill(const PaneWidths& widths, const PaneSetting& setting, Single controlWidth) {
    const double total = setting.pool
                             ? splitterWidth + (double(widths.list) + widths.pool + widths.tree) + splitterWidth
                             : splitterWidth + (double(widths.list) + widths.tree);
    return roundToLong(widths.list - (total - controlWidth));
}

bool mayPlaceSplitter(Long left, Single scaleWidth, Single poolWidth) {
    return static_cast<Single>(left) > smallestPaneWidth + poolWidth &&
           static_cast<Single>(left) < scaleWidth - smallestPaneWidth;
}

bool mayPlaceSplitterArt(Long left, Single splitterLeft) {
    return static_cast<Single>(left) > smallestPaneWidth &&
           static_cast<Single>(left) < splitterLeft - smallestPaneWidth;
}

} // namespace mkl
