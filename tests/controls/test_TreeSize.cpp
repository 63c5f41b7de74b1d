// What large and deep trees cost.
#include "controls/TreeFixture.h"

#include <ctime>
#include <malloc.h>

namespace mkl {

using TreeSizeTest = TreeFixture;

namespace {

constexpr Long siblings = 10'000;

/// 100,000 nodes: ten roots with 9,999 children each, keys and texts as a catalogue has them.
qint64 fillLarge(TreeView& tree) {
    qint64 textBytes = 0;
    Long number = 0;
    for (Long root = 0; root < 10; ++root) {
        const QString rootKey = u"A-%1"_s.arg(root * siblings);
        for (Long child = 0; child < siblings; ++child) {
            const QString key = u"A-%1"_s.arg(number);
            const QString text = u"%1 - Befestigungstechnik für Möbel"_s.arg(child, 3, 10, QChar(u'0'));
            const Ref<Node> node = tree.Nodes().Add(child == 0 ? Variant() : Variant(rootKey), tvwChild, key, text);
            node->setTag(Variant(number++));
            node->setImage(u"OrdnerZuOn"_s);
            textBytes += key.toUtf8().size() + text.toUtf8().size();
        }
    }
    return textBytes;
}

qint64 heapInUse() {
    return static_cast<qint64>(mallinfo2().uordblks) + static_cast<qint64>(mallinfo2().hblkhd);
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

} // namespace

TEST_F(TreeSizeTest, ANodeTakesLessThan400BytesBesideItsText) {
    if (sanitized) GTEST_SKIP() << "the sanitizer's allocator does not report to mallinfo2";
    const qint64 before = heapInUse();
    const qint64 textBytes = fillLarge(tree);
    const qint64 perNode = (heapInUse() - before - textBytes) / tree.Nodes().Count();
    RecordProperty("bytesPerNode", static_cast<int>(perNode));
    EXPECT_LT(perNode, 400);
    EXPECT_GT(perNode, 100); // else nothing was measured
}

TEST_F(TreeSizeTest, FillingIsLinear) {
    // A hundred times the nodes would take ten thousand times the time if each had to look at its siblings.
    const auto processorTime = [](Long count) {
        TreeView level;
        const std::clock_t start = std::clock();
        for (Long i = 0; i < count; ++i)
            level.Nodes().Add({}, tvwLast, QString::number(i), u"x"_s)->Index();
        return std::clock() - start;
    };
    processorTime(1000); // warms up
    const std::clock_t small = std::max<std::clock_t>(1, processorTime(1000));
    EXPECT_LT(processorTime(100'000), 1000 * small);
}

TEST_F(TreeSizeTest, ALargeTreeShowsClearsAndRemoves) {
    fillLarge(tree);
    EXPECT_EQ(tree.Nodes().Count(), 10 * siblings);
    show();
    EXPECT_EQ(tree.model()->rowCount(), 10);
    const Ref<Node> last = tree.Nodes().Item(10 * siblings);
    last->EnsureVisible();
    EXPECT_EQ(tree.model()->rowCount(tree.model()->index(9, 0)), siblings - 1);
    EXPECT_FALSE(last->Next());
    EXPECT_EQ(last->Previous()->Index(), 10 * siblings - 1);
    tree.hide();
    for (Long i = 0; i < 1000; ++i) // removals one by one, from the front of a large level
        tree.Nodes().Remove(tree.Nodes().Item(u"A-0"_s)->Child()->Key());
    EXPECT_EQ(tree.Nodes().Count(), 10 * siblings - 1000);
    EXPECT_EQ(tree.Nodes().Item(2)->Key(), u"A-1001"_s);
    tree.Nodes().Remove(1);
    EXPECT_EQ(tree.Nodes().Count(), 9 * siblings);
    tree.Nodes().Clear();
    EXPECT_EQ(tree.Nodes().Count(), 0);
}

TEST_F(TreeSizeTest, TenThousandLevels) {
    constexpr Long levels = 10'000;
    for (Long i = 1; i <= levels; ++i)
        tree.Nodes().Add(i == 1 ? Variant() : Variant(Long(i - 1)), tvwChild, QString::number(i), u"x"_s);
    const Ref<Node> deepest = tree.Nodes().Item(levels);
    deepest->EnsureVisible(); // expands all above it
    EXPECT_EQ(log.size(), levels - 1);
    show();
    int depth = 0;
    QModelIndex index = tree.model()->index(0, 0);
    for (; tree.model()->hasChildren(index); index = tree.model()->index(0, 0, index))
        ++depth;
    EXPECT_EQ(depth, levels - 1);
    EXPECT_TRUE(tree.visualRect(index).isValid());
    tree.setSelectedItem(deepest);
    tree.Nodes().Item(1)->setExpanded(false);
    EXPECT_EQ(tree.SelectedItem()->Index(), 1);
    tree.Nodes().Item(1)->setExpanded(true);
    QApplication::processEvents();
    tree.Nodes().Remove(levels / 2);
    EXPECT_EQ(tree.Nodes().Count(), levels / 2 - 1);
    tree.hide();
    tree.Nodes().Remove(1);
    EXPECT_EQ(tree.Nodes().Count(), 0);
}

} // namespace mkl
