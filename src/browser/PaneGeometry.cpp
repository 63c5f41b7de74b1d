#include "browser/PaneGeometry.h"

#include "base/Variant.h"

namespace mkl {

PaneSpans evenPaneSpans(const PaneSetting& setting) {
    const Long share = roundToLong(setting.scaleWidth / (1 + setting.pool + setting.list));
    const Long right = roundToLong(setting.scaleWidth);

    PaneSpans spans;
    if (setting.pool) spans.pool.width = share;
    spans.splitterArt = {spans.pool.width, splitterWidth};
    spans.tree.left = setting.pool ? share + splitterWidth : 0;
    spans.splitter = {setting.list ? spans.tree.left + share : right - splitterWidth, splitterWidth};
    spans.tree.width = (setting.list ? spans.splitter.left : right) - spans.tree.left;
    const Long listLeft = spans.splitter.left + splitterWidth;
    if (setting.list) spans.list = {listLeft, right - listLeft};
    return spans;
}

} // namespace mkl
