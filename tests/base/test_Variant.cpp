#include "base/Variant.h"
#include "support/Printing.h"

#include <limits>

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(Variant, wholeNumbersRoundHalfToEven) {
    EXPECT_EQ(Variant(2.5).toLong(), 2);
    EXPECT_EQ(Variant(3.5).toLong(), 4);
    EXPECT_EQ(Variant(-2.5).toLong(), -2);
    EXPECT_EQ(Variant(u" 12.5 "_s).toLong(), 12);
}

TEST(Variant, rangeOfLongIsChecked) {
    EXPECT_EQ(Variant(2147483647.4).toLong(), std::numeric_limits<Long>::max());
    EXPECT_EQ(errorOf([] { Variant(2147483647.5).toLong(); }), err::Overflow);
    EXPECT_EQ(Variant(-2147483648.0).toLong(), std::numeric_limits<Long>::min());
    EXPECT_EQ(errorOf([] { Variant(std::numeric_limits<double>::quiet_NaN()).toLong(); }), err::Overflow);
}

TEST(Variant, nullAndWrongTexts) {
    EXPECT_EQ(errorOf([] { Variant().toLong(); }), err::InvalidNull);
    EXPECT_EQ(errorOf([] { Variant().toText(); }), err::InvalidNull);
    EXPECT_EQ(errorOf([] { Variant(u"abc"_s).toLong(); }), err::TypeMismatch);
    EXPECT_EQ(errorOf([] { Variant(u"nan"_s).toDouble(); }), err::TypeMismatch);
    EXPECT_EQ(errorOf([] { Variant(u""_s).toDouble(); }), err::TypeMismatch);
}

TEST(Variant, trueIsMinusOne) {
    EXPECT_EQ(Variant(true).toLong(), -1);
    EXPECT_EQ(Variant(true).toText(), u"-1"_s);
    EXPECT_TRUE(Variant(Long(1)).toBoolean());
    EXPECT_FALSE(Variant(0.0).toBoolean());
}

TEST(Variant, nullDiffersFromEmptyTextAndTypesDiffer) {
    EXPECT_NE(Variant(), Variant(QString()));
    EXPECT_EQ(Variant(), Variant());
    EXPECT_NE(Variant(Long(1)), Variant(1.0));
    EXPECT_NE(Variant(u"a"_s), Variant(u"A"_s));
}

TEST(Variant, textsOfNumbers) {
    EXPECT_EQ(Variant(9.22).toText(), u"9.22"_s);
    EXPECT_EQ(Variant(0.1 + 0.2).toText(), u"0.3"_s);
    EXPECT_EQ(Variant(-0.0).toText(), u"0"_s);
    EXPECT_EQ(Variant::currency(127177'5324).toText(), u"127177.5324"_s);
    EXPECT_EQ(Variant::currency(-5000).toText(), u"-0.5"_s);
    EXPECT_EQ(Variant::currency(std::numeric_limits<qint64>::min()).toText(), u"-922337203685477.5808"_s);
}

TEST(Variant, hexadecimalNumbersHaveTheirSign) {
    double number = 0;
    EXPECT_TRUE(parseNumber(u"&HFF", number));
    EXPECT_EQ(number, 255);
    EXPECT_TRUE(parseNumber(u"&HFFFF", number));
    EXPECT_EQ(number, -1);
    EXPECT_FALSE(parseNumber(u"&HFFFFFFFFF", number));
}

TEST(Variant, datesAreWrittenInTheGermanWay) {
    EXPECT_EQ(Variant::date(37000).toText(), u"19.04.2001"_s);
    EXPECT_EQ(Variant::date(37000.75).toText(), u"19.04.2001 18:00:00"_s);
    EXPECT_EQ(Variant::date(0.75).toText(), u"18:00:00"_s);
    EXPECT_EQ(Variant(u"2001-04-19 18:00:00"_s).toDate(), 37000.75);
    EXPECT_EQ(errorOf([] { Variant(1e9).toDate(); }), err::Overflow);
}
