#include "controls/ItemStore.h"

#include "support/Printing.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class Thing final : public Item {
public:
    explicit Thing(const QString& key)
        : Item(key, key) {
        ++alive;
    }
    ~Thing() override { --alive; }

    static inline int alive = 0;

protected:
    void rekey(std::string key) override { assignKey(std::move(key)); }
    void changed() override {}
};

class ItemStoreTest : public ::testing::Test {
protected:
    Ref<Thing> append(const QString& key) {
        Ref<Thing> thing = makeRef<Thing>(key);
        store.append(thing);
        return thing;
    }

    QString keys() const {
        QString joined;
        for (const Ref<Thing>& thing : store)
            joined += thing->Key();
        return joined;
    }

    ItemStore<Thing> store;
};

} // namespace

TEST_F(ItemStoreTest, HoldsItsItemsUntilTheyGo) {
    const int before = Thing::alive;
    append(u"a"_s);
    const Ref<Thing> held = append(u"b"_s);
    store.remove(*store.find("a"));
    EXPECT_EQ(Thing::alive, before + 1);
    store.remove(*held);
    EXPECT_EQ(Thing::alive, before + 1);
    EXPECT_EQ(store.count(), 0);
}

TEST_F(ItemStoreTest, HolesAreInvisible) {
    for (const char16_t c : u"abcdef"_s.toStdU16String())
        append(QString(QChar(c)));
    store.remove(*store.find("b"));
    store.remove(*store.find("e"));
    EXPECT_EQ(store.count(), 4);
    EXPECT_EQ(store.indexOf(*store.find("f")), 4);
    append(u"g"_s);
    EXPECT_EQ(store.item(5).Key(), u"g"_s);
    EXPECT_EQ(keys(), u"acdfg"_s);
    store.remove(*store.find("a"));
    store.insert(1, makeRef<Thing>(u"x"_s));
    EXPECT_EQ(keys(), u"cxdfg"_s);
    EXPECT_EQ(store.indexOf(*store.find("g")), 5);
}

TEST_F(ItemStoreTest, IndexIsANumberAndKeyIsAText) {
    append(u"7"_s);
    EXPECT_EQ(store.item(u"7"_s).Key(), u"7"_s);
    EXPECT_EQ(store.item(1).Key(), u"7"_s);
    EXPECT_EQ(store.item(Variant(1.4)).Key(), u"7"_s);
    EXPECT_EQ(errorOf([&] { store.item(7); }), 35601);
    EXPECT_EQ(errorOf([&] { store.item(u"1"_s); }), 35601);
    EXPECT_EQ(errorOf([&] { store.item({}); }), 94);
}

TEST_F(ItemStoreTest, ErrorsNameTheKey) {
    append(u"ä"_s);
    try {
        store.item(u"ö"_s);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.description().contains(u"'ö'")) << error.what();
    }
    try {
        store.checkNew(*makeRef<Thing>(u"ä"_s));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.description().contains(u"'ä'")) << error.what();
    }
}

} // namespace mkl
