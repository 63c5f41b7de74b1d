#include "base/DateTime.h"
#include "dao/StoredValue.h"
#include "support/Printing.h"

#include <gtest/gtest.h>
#include <limits>

namespace dao {

using namespace Qt::StringLiterals;
using jet::ColumnType;
using mkl::errorOf;
using mkl::Variant;

namespace {
Variant roundTrip(const Variant& value, ColumnType type) {
    return decode(encodeFor(value, type, u"Feld"_s), type);
}
} // namespace

TEST(StoredValue, TheColumnTypeDecides) {
    EXPECT_EQ(decode(StoredValue::ofInteger(-1), ColumnType::Boolean), Variant(true));
    EXPECT_EQ(decode(StoredValue::ofInteger(0), ColumnType::Boolean), Variant(false));
    EXPECT_EQ(decode(StoredValue::ofInteger(3), ColumnType::Int), Variant(3));
    EXPECT_EQ(decode(StoredValue::ofInteger(3), ColumnType::Double), Variant(3.0));
    EXPECT_EQ(decode(StoredValue::ofInteger(5), ColumnType::Currency), Variant::currency(50000));
    EXPECT_EQ(decode(StoredValue::ofText("2001-05-01 12:00:00"), ColumnType::Date), Variant::date(37012.5));
    EXPECT_EQ(decode(StoredValue::ofBlob("ab"), ColumnType::Binary), Variant(QByteArray("ab")));
    EXPECT_EQ(decode({}, ColumnType::Int), Variant());
}

TEST(StoredValue, AValueOfAnotherKindStandsForItself) {
    EXPECT_EQ(decode(StoredValue::ofText("viele"), ColumnType::Int), Variant(u"viele"_s));
    EXPECT_EQ(decode(StoredValue::ofText("gestern"), ColumnType::Date), Variant(u"gestern"_s));
    EXPECT_EQ(decode(StoredValue::ofReal(1.5), ColumnType::Int), Variant(1.5));
    EXPECT_EQ(decode(StoredValue::ofInteger(7), ColumnType::Text), Variant(7));
    EXPECT_EQ(decode(StoredValue::ofInteger(7), ColumnType::Unknown), Variant(7));
}

TEST(StoredValue, WholeNumbersAreNeverCut) {
    const auto decoded = [](qint64 number) { return decode(StoredValue::ofInteger(number), ColumnType::Int); };
    EXPECT_EQ(decoded(2147483647), Variant(2147483647));
    EXPECT_EQ(decoded(-2147483648LL), Variant(std::numeric_limits<mkl::Long>::min()));
    EXPECT_EQ(decoded(2147483648LL), Variant(2147483648.0));
    EXPECT_EQ(decoded(-2147483649LL), Variant(-2147483649.0));
    EXPECT_EQ(decoded(9007199254740992LL), Variant(9007199254740992.0));
    EXPECT_EQ(decoded(9007199254740993LL), Variant(u"9007199254740993"_s));
    EXPECT_EQ(decoded(std::numeric_limits<qint64>::min()), Variant(u"-9223372036854775808"_s));
}

TEST(StoredValue, CurrencyKeepsFourDecimals) {
    for (const qint64 amount :
         {1271775324LL, 540849532290LL, 1LL, -1LL, 99999LL, 1234567890123457LL, -1234567890123457LL})
        EXPECT_EQ(roundTrip(Variant::currency(amount), ColumnType::Currency), Variant::currency(amount));
    EXPECT_EQ(errorOf([] { encode(Variant::currency(std::numeric_limits<qint64>::max() - 1)); }), 3349);
}

TEST(StoredValue, BrokenTextsComeThrough) {
    const Variant broken = decode(StoredValue::ofText("a\xFFz"), ColumnType::Text);
    EXPECT_EQ(broken, Variant(u"a\uFFFDz"_s));
    const Variant withNul = decode(StoredValue::ofText(QByteArray("a\0z", 3)), ColumnType::Text);
    EXPECT_EQ(withNul.toText().size(), 3);
    EXPECT_EQ(roundTrip(withNul, ColumnType::Text), withNul);
}

TEST(StoredValue, AColumnConvertsWhatItTakes) {
    EXPECT_EQ(encodeFor(Variant(true), ColumnType::Int, {}).integer, -1);
    EXPECT_EQ(encodeFor(Variant(7), ColumnType::Boolean, {}).integer, -1);
    EXPECT_EQ(encodeFor(Variant(2.5), ColumnType::Int, {}).integer, 2);
    EXPECT_EQ(encodeFor(Variant(u"12"_s), ColumnType::Int, {}).integer, 12);
    EXPECT_EQ(encodeFor(Variant(12), ColumnType::Text, {}).bytes, "12");
    EXPECT_EQ(encodeFor(Variant::date(37012.5), ColumnType::Date, {}).bytes, "2001-05-01 12:00:00");
    EXPECT_EQ(encodeFor(Variant(u"2001-05-01"_s), ColumnType::Date, {}).bytes, "2001-05-01 00:00:00");
    EXPECT_EQ(encodeFor(Variant(), ColumnType::Int, {}).kind, StoredValue::Kind::Null);
    EXPECT_EQ(errorOf([] { encodeFor(Variant(u"zwölf"_s), ColumnType::Int, u"Nr"_s); }), 3421);
    EXPECT_EQ(errorOf([] { encodeFor(Variant(2147483648.0), ColumnType::Int, u"Nr"_s); }), 6);
}

} // namespace dao
