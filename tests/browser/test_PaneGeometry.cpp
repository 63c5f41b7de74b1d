#include "browser/PaneGeometry.h"

#include <gtest/gtest.h>

using namespace mkl;

TEST(PaneGeometry, threePanesShareTheWidth) {
    const PaneSpans spans = evenPaneSpans({.scaleWidth = 9000});
    EXPECT_EQ(spans.pool, (PaneSpan{0, 3000}));
    EXPECT_EQ(spans.splitterArt, (PaneSpan{3000, 30}));
    EXPECT_EQ(spans.tree, (PaneSpan{3030, 3000}));
    EXPECT_EQ(spans.splitter, (PaneSpan{6030, 30}));
    EXPECT_EQ(spans.list, (PaneSpan{6060, 2940}));
}

TEST(PaneGeometry, aPaneThatIsOffLeavesItsRoom) {
    const PaneSpans noPool = evenPaneSpans({.scaleWidth = 9000, .pool = false});
    EXPECT_EQ(noPool.pool.width, 0);
    EXPECT_EQ(noPool.tree, (PaneSpan{0, 4500}));
    EXPECT_EQ(noPool.list, (PaneSpan{4530, 4470}));

    const PaneSpans noList = evenPaneSpans({.scaleWidth = 9000, .list = false});
    EXPECT_EQ(noList.list.width, 0);
    EXPECT_EQ(noList.tree, (PaneSpan{4530, 4470}));
    EXPECT_EQ(noList.splitter.left, 8970);
}

TEST(PaneGeometry, theTreeAloneFillsTheWidth) {
    EXPECT_EQ(evenPaneSpans({.scaleWidth = 9000, .pool = false, .list = false}).tree, (PaneSpan{0, 9000}));
}
