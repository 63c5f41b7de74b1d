#include "controls/TreeFixture.h"

#include <QAbstractItemModelTester>
#include <random>

namespace mkl {

using TreeModelTest = TreeFixture;

namespace {

/// Random edits of a tree, the same ones for the same seed.
class Editor {
public:
    Editor(TreeView& tree, unsigned seed)
        : tree_(tree)
        , random_(seed) {}

    void step() {
        const Long count = tree_.Nodes().Count();
        const int what = below(100);
        if (count == 0 || what < 55) return add(count);
        const Ref<Node> node = tree_.Nodes().Item(1 + below(count));
        if (what < 65) return tree_.Nodes().Remove(node->Index());
        if (what < 75) return node->setExpanded(!node->Expanded());
        if (what < 83) return tree_.setSelectedItem(node);
        if (what < 88) return node->setText(QString::number(below(1000)));
        if (what < 91) return node->EnsureVisible();
        if (what < 94) return tree_.setDropHighlight(node);
        if (what < 99) return tree_.setVisible(!tree_.isVisible());
        if (below(10) == 0) tree_.Nodes().Clear();
    }

private:
    void add(Long count) {
        const Variant relative = count == 0 ? Variant() : Variant(Long(1 + below(count)));
        tree_.Nodes().Add(relative, static_cast<TreeRelationshipConstants>(below(5)), QString::number(++keys_),
                          QStringLiteral("x"));
    }
    Long below(Long limit) { return static_cast<Long>(random_() % static_cast<unsigned>(limit)); }

    TreeView& tree_;
    std::mt19937 random_;
    int keys_ = 0;
};

/// Compares the nodes with what the model shows of them, level by level.
void compare(const TreeView& tree) {
    const QAbstractItemModel& model = *tree.model();
    struct Level {
        Ref<Node> first;
        QModelIndex parent;
    };
    std::vector<Level> levels;
    if (tree.Nodes().Count() > 0) levels.push_back({tree.Nodes().Item(1)->Root(), {}});
    int seen = 0;
    while (!levels.empty()) {
        const Level level = levels.back();
        levels.pop_back();
        int row = 0;
        for (Ref<Node> node = level.first; node; node = node->Next(), ++row, ++seen) {
            const QModelIndex index = model.index(row, 0, level.parent);
            ASSERT_TRUE(index.isValid());
            ASSERT_EQ(index.data().toString(), node->Text());
            ASSERT_EQ(tree.isExpanded(index), node->Expanded()) << node->Key().toStdString();
            ASSERT_EQ(tree.selectionModel()->isSelected(index), node->Selected());
            ASSERT_EQ(model.parent(index), level.parent);
            if (node->Children() > 0) levels.push_back({node->Child(), index});
        }
        ASSERT_EQ(row, model.rowCount(level.parent));
    }
    ASSERT_EQ(seen, tree.Nodes().Count());
}

} // namespace

TEST_F(TreeModelTest, StaysConsistentUnderRandomEdits) {
    for (const unsigned seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
        TreeView view;
        view.resize(200, 200);
        view.show();
        const QAbstractItemModelTester tester(view.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        Editor editor(view, seed);
        for (int i = 0; i < 1000; ++i) {
            editor.step();
            if (i % 50 == 0) QApplication::processEvents();
            if (i % 25 == 0 && view.isVisible()) compare(view);
            if (HasFatalFailure()) FAIL() << "seed " << seed << ", step " << i;
        }
        view.show();
        compare(view);
    }
}

TEST_F(TreeModelTest, AWatchedTreeSignalsEachRow) {
    show();
    QStringList signalled;
    QObject::connect(tree.model(), &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex& parent, int first, int last) {
                         signalled << u"%1 %2-%3"_s.arg(parent.data().toString()).arg(first).arg(last);
                     });
    fill();
    EXPECT_EQ(signalled, (QStringList{u" 0-0"_s, u" 1-1"_s, u"001 - a 0-0"_s, u"001 - a 1-1"_s, u"001 - a1 0-0"_s}));
}

TEST_F(TreeModelTest, IndexesOfOthersAndBeyondTheEndAreInvalid) {
    fill();
    show();
    const QAbstractItemModel& model = *tree.model();
    EXPECT_FALSE(model.index(2, 0).isValid());
    EXPECT_FALSE(model.index(0, 1).isValid());
    EXPECT_FALSE(model.index(-1, 0).isValid());
    EXPECT_FALSE(model.data({}).isValid());
    EXPECT_FALSE(model.parent({}).isValid());
}

} // namespace mkl
