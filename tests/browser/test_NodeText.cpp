#include "browser/NodeText.h"
#include "support/Printing.h"

#include <limits>

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(NodeText, positionIsPaddedNeverCut) {
    EXPECT_EQ(positionText(7), u"007"_s);
    EXPECT_EQ(positionText(0), u"000"_s);
    EXPECT_EQ(positionText(1234), u"1234"_s);
    EXPECT_EQ(positionText(-7), u"-007"_s);
    EXPECT_EQ(positionText(std::numeric_limits<Long>::min()), u"-2147483648"_s);
    EXPECT_EQ(positionText({}), QString());
}

TEST(NodeText, joinsPositionAndName) {
    EXPECT_EQ(nodeText(7, u"Schrauben"_s), u"007 - Schrauben"_s);
    EXPECT_EQ(nodeText(1000, u"Name"_s), u"1000 - Name"_s);
}

TEST(NodeText, nullCountsAsEmptyText) {
    EXPECT_EQ(nodeText(1, {}), u"001 - "_s);
    EXPECT_EQ(nodeText({}, u"Name"_s), u" - Name"_s);
    EXPECT_EQ(nodeKey({}), u"A-"_s);
}

TEST(NodeText, keyTakesAnyWholeNumber) {
    EXPECT_EQ(nodeKey(123), u"A-123"_s);
    EXPECT_EQ(nodeKey(-5), u"A--5"_s);
    EXPECT_EQ(nodeKey(std::numeric_limits<Long>::max()), u"A-2147483647"_s);
    EXPECT_EQ(nodeKey(std::numeric_limits<Long>::min()), u"A--2147483648"_s);
}

TEST(NodeText, readsPositionAndNameBack) {
    EXPECT_EQ(OrderFromNodeText(u"007 - Schrauben"), 7);
    EXPECT_EQ(NameFromNodeText(u"007 - Schrauben"), u"Schrauben"_s);
    EXPECT_EQ(OrderFromNodeText(u"1000 - Name"), 1000);
    EXPECT_EQ(NameFromNodeText(u"1000 - Name"), u"Name"_s);
}

TEST(NodeText, nameMayHoldHyphens) {
    EXPECT_EQ(OrderFromNodeText(u"012 - A-B"), 12);
    EXPECT_EQ(NameFromNodeText(u"012 - A-B"), u"A-B"_s);
    EXPECT_EQ(NameFromNodeText(u"012 - - -"), u"- -"_s);
}

TEST(NodeText, survivesAnyName) {
    for (const QString& name : {u"O'Reilly \"Zoll\" [x] * ? #"_s, u"a\0b"_s, u"Öl\u00A0"_s, QString(5000, u'x')}) {
        EXPECT_EQ(NameFromNodeText(nodeText(3, name)), name);
        EXPECT_EQ(OrderFromNodeText(nodeText(3, name)), 3);
    }
    EXPECT_EQ(NameFromNodeText(nodeText(3, u"  blank  "_s)), u"blank"_s);
}

TEST(NodeText, textWithoutTheFormGivesNoPosition) {
    EXPECT_EQ(OrderFromNodeText(u""), 0);
    EXPECT_EQ(OrderFromNodeText(u"Schrauben"), 0);
    EXPECT_EQ(OrderFromNodeText(u" - Name"), 0);
    EXPECT_EQ(NameFromNodeText(u""), QString());
    EXPECT_EQ(NameFromNodeText(u"Schrauben"), u"Schrauben"_s);
}
