#include "browser/BrowserHost.h"
#include "browser/NodeText.h"

#include <limits>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {
class HostileData : public BrowserHost {};
} // namespace

TEST_F(HostileData, keysAtBothEndsOf32Bits) {
    constexpr Long lowest = std::numeric_limits<Long>::min();
    constexpr Long highest = std::numeric_limits<Long>::max();
    catalogue.addCategory({.key = lowest, .name = u"unten"_s, .order = lowest});
    catalogue.addCategory({.key = highest, .name = u"oben"_s, .parent = lowest, .order = highest});
    catalogue.addCategory({.key = 0, .name = u"null"_s, .parent = highest});
    catalogue.addCategory({.key = -1, .name = u"minus"_s, .parent = 0});
    EXPECT_EQ(browser->Populate(), 4);
    EXPECT_EQ(treeLines(), (QStringList{u"-2147483648 - unten"_s, u"  2147483647 - oben"_s, u"    001 - null"_s,
                                        u"      001 - minus"_s}));
    EXPECT_EQ(node(lowest)->Tag(), Variant(lowest));
    EXPECT_EQ(browser->Selected(acbPaneCategoryTree), lowest);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(HostileData, namesAreTakenAsTheyStand) {
    const QStringList names = {u"O'Reilly \"Zoll\""_s, u"[Klammer] {x}"_s,    u"a*b?c#d!"_s,     u"A-B"_s,
                               u"Zeile\r\nzwei"_s,     u"%1 %2 &Datei"_s,     u"Größe – Öl ß"_s, u"<b>fett</b>"_s,
                               QString(100000, u'x'),  u"\U0001F529 Mutter"_s};
    for (Long key = 1; key <= names.size(); ++key)
        catalogue.addCategory({.key = key, .name = names[key - 1], .order = key});
    EXPECT_EQ(browser->Populate(), names.size());
    for (Long key = 1; key <= names.size(); ++key)
        EXPECT_EQ(NameFromNodeText(node(key)->Text()), names[key - 1]);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(HostileData, aNullCharacterIsKeptOrRefusedInWords) {
    const QString name = u"vor\0nach"_s;
    try {
        catalogue.addCategory({.key = 1, .name = name});
        EXPECT_FALSE(testsOnServer());
        browser->Populate();
        EXPECT_EQ(NameFromNodeText(node(1)->Text()), name);
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(testsOnServer());
        EXPECT_EQ(error.number(), 3421);
        EXPECT_TRUE(error.description().contains(u"Nullzeichen"_s)) << error.description().toStdString();
        EXPECT_EQ(browser->Populate(), 0);
    }
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(HostileData, aThousandAndMoreReadBack) {
    catalogue.addCategory({.key = 1, .name = u"A-B"_s, .order = 1000});
    browser->Populate();
    EXPECT_EQ(node(1)->Text(), u"1000 - A-B"_s);
    EXPECT_EQ(OrderFromNodeText(node(1)->Text()), 1000);
    EXPECT_EQ(NameFromNodeText(node(1)->Text()), u"A-B"_s);
}

TEST_F(HostileData, tenThousandLevels) {
    constexpr Long levels = 10000;
    catalogue.addChain(levels);
    EXPECT_EQ(browser->Populate(), levels);
    EXPECT_EQ(node(levels)->Parent(), node(levels - 1));
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(HostileData, aFailureAtTheBottomOfTenThousandLevelsAsksOnce) {
    constexpr Long levels = 10000;
    catalogue.addChain(levels);
    catalogue.addCategory({.key = levels + 1, .name = u"unten"_s, .parent = levels, .active = {}});
    catalogue.addCategory({.key = levels + 2, .name = u"danach"_s, .parent = 1, .order = 2});
    catalogue.addCategory({.key = levels + 3, .name = u"Wurzel"_s, .order = 2});
    EXPECT_EQ(browser->Populate(), levels + 2);
    EXPECT_EQ(user.shown.size(), 1);
}
