#include "controls/TreeFixture.h"

namespace mkl {

using NodeCollectionTest = TreeFixture;

TEST_F(NodeCollectionTest, CountsAndFindsByKeyAndIndex) {
    fill();
    EXPECT_EQ(tree.Nodes().Count(), 5);
    EXPECT_EQ(tree.Nodes().Item(3)->Key(), u"a1"_s);
    EXPECT_EQ(tree.Nodes().Item(u"a11"_s)->Index(), 5);
    EXPECT_EQ(order(), (QStringList{u"a"_s, u"b"_s, u"a1"_s, u"a2"_s, u"a11"_s}));
}

TEST_F(NodeCollectionTest, MissingElementsAreError35601) {
    fill();
    EXPECT_EQ(errorOf([&] { tree.Nodes().Item(u"x"_s); }), 35601);
    EXPECT_EQ(errorOf([&] { tree.Nodes().Item(0); }), 35601);
    EXPECT_EQ(errorOf([&] { tree.Nodes().Item(6); }), 35601);
    EXPECT_EQ(errorOf([&] { tree.Nodes().Item(u""_s); }), 35601);
    EXPECT_EQ(errorOf([&] { tree.Nodes().Remove(u"x"_s); }), 35601);
    EXPECT_EQ(errorOf([&] { add(u"x"_s, u"y"_s); }), 35601);
    EXPECT_EQ(tree.Nodes().Count(), 5);
}

TEST_F(NodeCollectionTest, DoubledKeyIsError35602AndAddsNothing) {
    fill();
    EXPECT_EQ(errorOf([&] { add(u"b"_s, u"a"_s); }), 35602);
    EXPECT_EQ(errorOf([&] { node(u"a"_s)->setKey(u"b"_s); }), 35602);
    EXPECT_EQ(tree.Nodes().Count(), 5);
    EXPECT_EQ(node(u"b"_s)->Children(), 0);
    EXPECT_EQ(node(u"a"_s)->Key(), u"a"_s);
}

TEST_F(NodeCollectionTest, UnknownRelationshipIsError5) {
    EXPECT_EQ(errorOf([&] { tree.Nodes().Add({}, static_cast<TreeRelationshipConstants>(5)); }), 5);
}

TEST_F(NodeCollectionTest, EmptyKeysMayRepeatAndAreNeverFound) {
    add({}, {});
    add({}, {});
    EXPECT_EQ(tree.Nodes().Count(), 2);
    EXPECT_EQ(tree.Nodes().Item(2)->Key(), QString());
    tree.Nodes().Remove(1);
    EXPECT_EQ(tree.Nodes().Count(), 1);
}

TEST_F(NodeCollectionTest, KeyCanBeChangedAndGivenUp) {
    fill();
    const Ref<Node> a = node(u"a"_s);
    a->setKey(u"neu"_s);
    EXPECT_EQ(node(u"neu"_s), a);
    EXPECT_EQ(errorOf([&] { node(u"a"_s); }), 35601);
    a->setKey(u"neu"_s);
    a->setKey({});
    EXPECT_EQ(errorOf([&] { node(u"neu"_s); }), 35601);
    add({}, u"neu"_s);
    EXPECT_EQ(tree.Nodes().Count(), 6);
}

TEST_F(NodeCollectionTest, RelationshipsPlaceTheNode) {
    add({}, u"m"_s);
    const auto place = [&](const Variant& relative, TreeRelationshipConstants where, const QString& key) {
        tree.Nodes().Add(relative, where, key, key);
    };
    place(u"m"_s, tvwFirst, u"first"_s);
    place(u"m"_s, tvwLast, u"last"_s);
    place(u"m"_s, tvwNext, u"next"_s);
    place(u"m"_s, tvwPrevious, u"previous"_s);
    place(u"m"_s, tvwChild, u"child1"_s);
    place(u"m"_s, tvwChild, u"child2"_s);
    place(1, tvwChild, u"child3"_s);
    EXPECT_EQ(level(node(u"m"_s)->Root()), (QStringList{u"first"_s, u"previous"_s, u"m"_s, u"next"_s, u"last"_s}));
    EXPECT_EQ(level(node(u"m"_s)->Child()), (QStringList{u"child1"_s, u"child2"_s, u"child3"_s}));
    place(u"child2"_s, tvwFirst, u"child0"_s);
    EXPECT_EQ(node(u"m"_s)->Child()->Key(), u"child0"_s);
}

TEST_F(NodeCollectionTest, WithoutARelativeTheTopLevelIsMeant) {
    add({}, u"m"_s);
    tree.Nodes().Add({}, tvwFirst, u"first"_s);
    tree.Nodes().Add({}, tvwPrevious, u"before"_s);
    tree.Nodes().Add({}, tvwNext, u"behind"_s);
    tree.Nodes().Add({}, tvwLast, u"last"_s);
    EXPECT_EQ(level(node(u"m"_s)->Root()), (QStringList{u"before"_s, u"first"_s, u"m"_s, u"behind"_s, u"last"_s}));
}

TEST_F(NodeCollectionTest, RelativesOfANode) {
    fill();
    const Ref<Node> a1 = node(u"a1"_s);
    EXPECT_EQ(keyOf(a1->Parent()), u"a"_s);
    EXPECT_EQ(keyOf(a1->Child()), u"a11"_s);
    EXPECT_EQ(keyOf(a1->Next()), u"a2"_s);
    EXPECT_EQ(keyOf(a1->Previous()), u"-"_s);
    EXPECT_EQ(keyOf(a1->Next()->Next()), u"-"_s);
    EXPECT_EQ(keyOf(a1->Next()->Previous()), u"a1"_s);
    EXPECT_EQ(keyOf(a1->FirstSibling()), u"a1"_s);
    EXPECT_EQ(keyOf(a1->LastSibling()), u"a2"_s);
    EXPECT_EQ(keyOf(a1->Root()), u"a"_s);
    EXPECT_EQ(keyOf(node(u"b"_s)->Root()), u"a"_s);
    EXPECT_EQ(keyOf(node(u"b"_s)->Parent()), u"-"_s);
    EXPECT_EQ(node(u"a"_s)->Children(), 2);
    EXPECT_EQ(node(u"a11"_s)->Children(), 0);
}

TEST_F(NodeCollectionTest, RemoveTakesTheSubtreeAndClosesTheOrder) {
    fill();
    add(u"b"_s, u"b1"_s);
    tree.Nodes().Remove(u"a1"_s);
    EXPECT_EQ(tree.Nodes().Count(), 4);
    EXPECT_EQ(order(), (QStringList{u"a"_s, u"b"_s, u"a2"_s, u"b1"_s}));
    EXPECT_EQ(node(u"b1"_s)->Index(), 4);
    EXPECT_EQ(tree.Nodes().Item(3)->Key(), u"a2"_s);
    EXPECT_EQ(errorOf([&] { node(u"a11"_s); }), 35601);
    EXPECT_EQ(level(node(u"a"_s)->Child()), QStringList{u"a2"_s});
    add(u"a"_s, u"a11"_s); // the key is free again
    EXPECT_EQ(node(u"a11"_s)->Index(), 5);
}

TEST_F(NodeCollectionTest, HeldNodesOutliveRemoval) {
    fill();
    const Ref<Node> a1 = node(u"a1"_s);
    const Ref<Node> a11 = node(u"a11"_s);
    a1->setTag(Variant(17));
    a1->setImage(u"OrdnerZuOn"_s);
    tree.Nodes().Remove(u"a"_s);
    for (const Ref<Node>& removed : {a1, a11}) {
        EXPECT_EQ(removed->Index(), 0);
        EXPECT_EQ(removed->Children(), 0);
        EXPECT_FALSE(removed->Parent());
        EXPECT_FALSE(removed->Child());
        EXPECT_FALSE(removed->Next());
        EXPECT_FALSE(removed->Previous());
        EXPECT_FALSE(removed->FirstSibling());
        EXPECT_FALSE(removed->LastSibling());
        EXPECT_FALSE(removed->Root());
        EXPECT_FALSE(removed->Selected());
    }
    EXPECT_EQ(a1->Key(), u"a1"_s);
    EXPECT_EQ(a1->Text(), u"001 - a1"_s);
    EXPECT_EQ(a1->Tag(), Variant(17));
    EXPECT_EQ(a1->Image(), u"OrdnerZuOn"_s);
    a1->setText(u"neu"_s);
    a1->setKey(u"b"_s); // no longer in the collection, so no double
    a1->setExpanded(true);
    a1->setSelected(true);
    a1->EnsureVisible();
    EXPECT_EQ(a1->Text(), u"neu"_s);
    EXPECT_FALSE(a1->Expanded());
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(NodeCollectionTest, HeldNodesOutliveClearAndTheTree) {
    auto other = std::make_unique<TreeView>();
    const Ref<Node> cleared = other->Nodes().Add({}, tvwLast, u"a"_s, u"x"_s);
    other->Nodes().Clear();
    EXPECT_EQ(other->Nodes().Count(), 0);
    const Ref<Node> last = other->Nodes().Add({}, tvwLast, u"a"_s, u"y"_s);
    other.reset();
    EXPECT_EQ(cleared->Text(), u"x"_s);
    EXPECT_EQ(last->Text(), u"y"_s);
    EXPECT_EQ(last->Index(), 0);
}

TEST_F(NodeCollectionTest, TextsAreKeptToTheLetter) {
    const QString strange = u"007 - Gewürz\"mühle'ß*["_s + QChar(u'\0') + u"€ 😀"_s;
    const Ref<Node> added = tree.Nodes().Add({}, tvwLast, strange, strange);
    EXPECT_EQ(added->Text(), strange);
    EXPECT_EQ(added->Key(), strange);
    EXPECT_EQ(node(strange), added);
    const QString longText(100'000, u'ü');
    added->setText(longText);
    EXPECT_EQ(added->Text(), longText);
}

TEST_F(NodeCollectionTest, KeysDifferByCase) {
    add({}, u"a"_s);
    add({}, u"A"_s);
    EXPECT_EQ(tree.Nodes().Count(), 2);
}

} // namespace mkl
