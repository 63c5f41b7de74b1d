#include "base/DateTime.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(DateTime, zeroIsTheThirtiethOfDecember1899) {
    EXPECT_EQ(isoFromDate(0.0), u"1899-12-30 00:00:00"_s);
    EXPECT_EQ(dateFromIso(u"1899-12-30"), 0.0);
}

TEST(DateTime, fractionOfANegativeNumberCountsForward) {
    EXPECT_EQ(isoFromDate(-1.75), u"1899-12-29 18:00:00"_s);
    EXPECT_EQ(dateFromIso(u"1899-12-29 18:00:00"), -1.75);
}

TEST(DateTime, everyDayOfTheCalendarComesBack) {
    for (double day = firstDay; day <= lastDay; day += 97)
        ASSERT_EQ(dateFromIso(isoFromDate(day)), day);
    EXPECT_EQ(isoFromDate(firstDay), u"0100-01-01 00:00:00"_s);
    EXPECT_EQ(isoFromDate(lastDay), u"9999-12-31 00:00:00"_s);
}

TEST(DateTime, secondsAreRoundedAndCarryIntoTheNextDay) {
    EXPECT_EQ(isoFromDate(37000.0 + 86399.7 / 86400), u"2001-04-20 00:00:00"_s);
    EXPECT_EQ(isoFromDate(*dateFromIso(u"2004-02-29 23:59:59")), u"2004-02-29 23:59:59"_s);
}

TEST(DateTime, impossibleDatesAreRefused) {
    for (const auto text : {u"2001-02-29", u"2001-13-01", u"2001-00-10", u"2001-4-5", u"2001-04-05 24:00",
                            u"2001-04-05 1", u"0099-12-31", u"", u"x"})
        EXPECT_FALSE(dateFromIso(text)) << QString::fromUtf16(text).toStdString();
    EXPECT_TRUE(dateFromIso(u"2001-04-05T07:08"));
}

TEST(DateTime, partsCarryOver) {
    EXPECT_EQ(dateFromParts({2001, 14, 1, 0, 0, 0}), dateFromIso(u"2002-02-01"));
    EXPECT_EQ(dateFromParts({2001, 3, 0, 0, 0, 0}), dateFromIso(u"2001-02-28"));
    EXPECT_EQ(dateFromParts({2001, 1, 1, -1, 0, 0}), dateFromIso(u"2000-12-31 23:00"));
}
