#include "browser/BrowserHost.h"
#include "browser/TreeNodes.h"

using namespace mkl;

namespace {

class TreeNodesTest : public BrowserHost {
protected:
    TreeNodesTest()
        : BrowserHost(u"41 a\n  411 aa\n    4111 aaa\n  412 ab\n50 b\n60 c\n"_s) {
        browser->Populate();
    }
    static QStringList textsOf(const std::vector<Ref<Node>>& nodes) {
        QStringList texts;
        for (const Ref<Node>& each : nodes)
            texts.append(each->Tag().toText());
        return texts;
    }
};

} // namespace

TEST_F(TreeNodesTest, siblingsAreCounted) {
    EXPECT_EQ(TV_SiblingCount(*node(60)), 3);
    EXPECT_EQ(TV_SiblingCount(*node(411)), 2);
    EXPECT_EQ(TV_SiblingCount(*node(4111)), 1);
}

TEST_F(TreeNodesTest, siblingsByTheirPlace) {
    EXPECT_EQ(TV_SiblingAt(*node(60), 1), node(41));
    EXPECT_EQ(TV_SiblingAt(*node(41), 3), node(60));
    EXPECT_EQ(TV_SiblingAt(*node(412), 2), node(412));
    EXPECT_FALSE(TV_SiblingAt(*node(412), 3));
    EXPECT_FALSE(TV_SiblingAt(*node(412), 0));
    EXPECT_FALSE(TV_SiblingAt(*node(412), -1));
}

TEST_F(TreeNodesTest, ancestors) {
    EXPECT_TRUE(TV_IsAncestor(*node(4111), *node(411)));
    EXPECT_TRUE(TV_IsAncestor(*node(4111), *node(41)));
    EXPECT_FALSE(TV_IsAncestor(*node(41), *node(4111)));
    EXPECT_FALSE(TV_IsAncestor(*node(41), *node(41)));
    EXPECT_FALSE(TV_IsAncestor(*node(412), *node(50)));
}

TEST_F(TreeNodesTest, addsANode) {
    const Ref<Node> added =
        TV_AddNode(tree(), node(41)->Index(), tvwNext, u"A-99"_s, u"002 - neu"_s, Long(99), u"OrdnerZuOn"_s);
    EXPECT_EQ(node(41)->Next(), added);
    EXPECT_EQ(added->Tag().toLong(), 99);
    EXPECT_EQ(added->Image(), u"OrdnerZuOn"_s);
    EXPECT_EQ(errorOf([&] { TV_AddNode(tree(), 1, tvwNext, u"A-99"_s, {}, {}, {}); }), 35602);
}

TEST_F(TreeNodesTest, collectsWhatIsBelow) {
    std::vector<Ref<Node>> nodes;
    EXPECT_EQ(TV_ChildNodes(*node(41), nodes, false), 2);
    EXPECT_EQ(textsOf(nodes), (QStringList{u"411"_s, u"412"_s}));
    nodes.clear();
    EXPECT_EQ(TV_ChildNodes(*node(41), nodes, true), 3);
    EXPECT_EQ(textsOf(nodes), (QStringList{u"411"_s, u"4111"_s, u"412"_s}));
    EXPECT_EQ(TV_ChildNodes(*node(411), nodes, true), 4); // what was there stays
    nodes.clear();
    EXPECT_EQ(TV_ChildNodes(*node(50), nodes, true), 0);
}
