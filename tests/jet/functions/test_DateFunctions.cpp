#include "base/DateTime.h"
#include "jet/FunctionCall.h"
#include "jet/functions/Calendar.h"
#include "support/StandingClock.h"

#include <QDate>

using namespace Qt::StringLiterals;
using namespace values;
using mkl::Variant;

namespace {

Variant d(const char16_t* iso) {
    const auto date = mkl::dateFromIso(QString::fromUtf16(iso));
    EXPECT_TRUE(date) << QString::fromUtf16(iso).toStdString();
    return Variant::date(date.value_or(0));
}

} // namespace

TEST(DateFunctions, theClockIsTheOneInForce) {
    const mkl::StandingClock fixed(37000.75);
    checkResults({
        {u"Now", {}, Variant::date(37000.75)},
        {u"Date", {}, Variant::date(37000)},
        {u"Time", {}, Variant::date(0.75)},
    });
}

TEST(DateFunctions, partsOfADate) {
    const Variant date = d(u"2001-04-19 18:05:09");
    checkResults({
        {u"Year", {date}, n(2001)},
        {u"Month", {date}, n(4)},
        {u"Day", {date}, n(19)},
        {u"Hour", {date}, n(18)},
        {u"Minute", {date}, n(5)},
        {u"Second", {date}, n(9)},
        {u"Year", {t(u"2001-04-19 18:05:09")}, n(2001)},
        {u"Hour", {t(u"19.04.2001 18:05")}, n(18)},
        {u"Year", {n(0)}, n(1899)},
        {u"Hour", {-1.75}, n(18)},
        {u"Day", {-1.75}, n(29)},
        {u"Weekday", {d(u"2001-04-22")}, n(1)}, // a Sunday
        {u"Weekday", {d(u"2001-04-19")}, n(5)},
        {u"Weekday", {d(u"2001-04-19"), n(2)}, n(4)},
        {u"Weekday", {d(u"2001-04-22"), n(0)}, n(7)},
        {u"Weekday", {n(0)}, n(7)},
        {u"Weekday", {d(u"1850-01-01")}, n(3)},
        {u"DateValue", {t(u"19.04.2001 18:05:09")}, d(u"2001-04-19")},
        {u"TimeValue", {t(u"19.04.2001 18:00")}, Variant::date(0.75)},
        {u"TimeValue", {Variant::date(-1.75)}, Variant::date(0.75)},
    });
    checkErrors({
        {u"Year", {t(u"x")}, 13},
        {u"Year", {1e9}, 6},
        {u"Weekday", {n(1), n(8)}, 5},
        {u"DateValue", {t(u"32.01.2001")}, 13},
    });
}

TEST(DateFunctions, serials) {
    checkResults({
        {u"DateSerial", {n(2001), n(4), n(19)}, d(u"2001-04-19")},
        {u"DateSerial", {n(2001), n(14), n(1)}, d(u"2002-02-01")},
        {u"DateSerial", {n(2001), n(1), n(0)}, d(u"2000-12-31")},
        {u"DateSerial", {n(2001), n(0), n(1)}, d(u"2000-12-01")},
        {u"DateSerial", {n(2001), n(3), n(-1)}, d(u"2001-02-27")},
        {u"DateSerial", {n(29), n(1), n(1)}, d(u"2029-01-01")},
        {u"DateSerial", {n(30), n(1), n(1)}, d(u"1930-01-01")},
        {u"DateSerial", {n(100), n(1), n(1)}, d(u"0100-01-01")},
        {u"TimeSerial", {n(18), n(0), n(0)}, Variant::date(0.75)},
        {u"TimeSerial", {n(12), n(0), n(21600)}, Variant::date(0.75)},
        {u"TimeSerial", {n(24), n(0), n(0)}, Variant::date(1)},
    });
    checkErrors({
        {u"DateSerial", {n(10000), n(1), n(1)}, 5},
        {u"DateSerial", {n(100), n(1), n(0)}, 5},
        {u"DateSerial", {n(40000), n(1), n(1)}, 6},
        {u"DateSerial", {t(u"x"), n(1), n(1)}, 13},
    });
}

TEST(DateFunctions, dateAdd) {
    checkResults({
        {u"DateAdd", {t(u"m"), n(1), d(u"2001-01-31")}, d(u"2001-02-28")},
        {u"DateAdd", {t(u"m"), n(1), d(u"2000-01-31 18:00:00")}, d(u"2000-02-29 18:00:00")},
        {u"DateAdd", {t(u"m"), n(-13), d(u"2001-03-31")}, d(u"2000-02-29")},
        {u"DateAdd", {t(u"q"), n(1), d(u"2001-11-30")}, d(u"2002-02-28")},
        {u"DateAdd", {t(u"YYYY"), n(1), d(u"2000-02-29")}, d(u"2001-02-28")},
        {u"DateAdd", {t(u"d"), n(-1), d(u"2001-03-01")}, d(u"2001-02-28")},
        {u"DateAdd", {t(u"w"), n(1), d(u"2001-02-28")}, d(u"2001-03-01")},
        {u"DateAdd", {t(u"y"), n(1), d(u"2001-02-28")}, d(u"2001-03-01")},
        {u"DateAdd", {t(u"ww"), n(2), d(u"2001-03-01")}, d(u"2001-03-15")},
        {u"DateAdd", {t(u"h"), n(30), d(u"2001-03-01")}, d(u"2001-03-02 06:00:00")},
        {u"DateAdd", {t(u"n"), n(-1), d(u"2001-03-01")}, d(u"2001-02-28 23:59:00")},
        {u"DateAdd", {t(u"s"), n(1), d(u"2001-02-28 23:59:59")}, d(u"2001-03-01")},
        {u"DateAdd", {t(u"h"), n(-6), n(0)}, d(u"1899-12-29 18:00:00")},
        {u"DateAdd", {t(u"m"), n(1), null}, null},
    });
    checkErrors({
        {u"DateAdd", {t(u"x"), n(1), n(1)}, 5},
        {u"DateAdd", {t(u"yyyy"), n(8000), d(u"2001-01-01")}, 5},
        {u"DateAdd", {t(u"d"), n(2147483647), d(u"2001-01-01")}, 5},
        {u"DateAdd", {t(u"ww"), n(-2147483647), d(u"2001-01-01")}, 5},
        {u"DateAdd", {t(u"d"), n(1), t(u"x")}, 13},
    });
}

TEST(DateFunctions, dateDiffCountsBorders) {
    checkResults({
        {u"DateDiff", {t(u"yyyy"), d(u"2000-12-31"), d(u"2001-01-01")}, n(1)},
        {u"DateDiff", {t(u"q"), d(u"2001-03-31"), d(u"2001-04-01")}, n(1)},
        {u"DateDiff", {t(u"m"), d(u"2001-01-31"), d(u"2001-02-01")}, n(1)},
        {u"DateDiff", {t(u"m"), d(u"2001-02-01"), d(u"2000-02-29")}, n(-12)},
        {u"DateDiff", {t(u"d"), d(u"2001-01-01 23:59:59"), d(u"2001-01-02")}, n(1)},
        {u"DateDiff", {t(u"h"), d(u"2001-01-01 00:59:59"), d(u"2001-01-01 01:00:00")}, n(1)},
        {u"DateDiff", {t(u"n"), d(u"2001-01-01 00:00:59"), d(u"2001-01-01 00:01:00")}, n(1)},
        {u"DateDiff", {t(u"s"), d(u"2001-01-01"), d(u"2001-01-02")}, n(86400)},
        {u"DateDiff", {t(u"d"), d(u"1899-12-29 18:00:00"), d(u"1899-12-31 06:00:00")}, n(2)},
        {u"DateDiff", {t(u"w"), d(u"2001-04-19"), d(u"2001-04-25")}, n(0)},
        {u"DateDiff", {t(u"w"), d(u"2001-04-19"), d(u"2001-04-26")}, n(1)},
        {u"DateDiff", {t(u"ww"), d(u"2001-04-21"), d(u"2001-04-22")}, n(1)}, // Saturday to Sunday
        {u"DateDiff", {t(u"ww"), d(u"2001-04-21"), d(u"2001-04-22"), n(2)}, n(0)},
        {u"DateDiff", {t(u"ww"), d(u"2001-04-22"), d(u"2001-04-23"), n(2)}, n(1)},
        {u"DateDiff", {t(u"d"), null, d(u"2001-04-22")}, null},
    });
    checkErrors({
        {u"DateDiff", {t(u"s"), d(u"1900-01-01"), d(u"2001-01-01")}, 6},
        {u"DateDiff", {t(u"z"), n(1), n(2)}, 5},
        {u"DateDiff", {t(u"d"), t(u"x"), n(2)}, 13},
        {u"DateDiff", {t(u"ww"), n(1), n(2), n(8)}, 5},
    });
}

TEST(DateFunctions, datePart) {
    const Variant date = d(u"2001-11-19 18:05:09");
    checkResults({
        {u"DatePart", {t(u"yyyy"), date}, n(2001)},
        {u"DatePart", {t(u"q"), date}, n(4)},
        {u"DatePart", {t(u"m"), date}, n(11)},
        {u"DatePart", {t(u"y"), date}, n(323)},
        {u"DatePart", {t(u"d"), date}, n(19)},
        {u"DatePart", {t(u"w"), date}, n(2)},
        {u"DatePart", {t(u"w"), date, n(2)}, n(1)},
        {u"DatePart", {t(u"h"), date}, n(18)},
        {u"DatePart", {t(u"n"), date}, n(5)},
        {u"DatePart", {t(u"s"), date}, n(9)},
        {u"DatePart", {t(u"ww"), d(u"2000-01-01")}, n(1)},
        {u"DatePart", {t(u"ww"), d(u"2000-01-02")}, n(2)},
        {u"DatePart", {t(u"ww"), d(u"2000-12-31")}, n(54)},
        {u"DatePart", {t(u"ww"), d(u"2000-01-01"), n(2), n(2)}, n(52)},
        {u"DatePart", {t(u"ww"), d(u"2000-01-03"), n(2), n(2)}, n(1)},
        {u"DatePart", {t(u"ww"), d(u"2003-12-29"), n(2), n(2)}, n(1)},
        {u"DatePart", {t(u"ww"), d(u"2004-12-31"), n(0), n(0)}, n(53)},
        {u"DatePart", {t(u"ww"), d(u"2001-01-06"), n(1), n(3)}, n(53)},
        {u"DatePart", {t(u"ww"), d(u"2001-01-07"), n(1), n(3)}, n(1)},
        {u"DatePart", {t(u"ww"), d(u"9999-12-31"), n(2), n(2)}, n(52)},
    });
    checkErrors({{u"DatePart", {t(u"x"), date}, 5}, {u"DatePart", {t(u"ww"), date, n(1), n(4)}, 5}});
}

// The weeks of Monday and four days are those of the international standard, which Qt knows too.
TEST(DateFunctions, weeksAgreeWithTheStandard) {
    const QDate start(1995, 1, 1);
    const auto first = static_cast<qint64>(mkl::dateFromIso(u"1995-01-01").value());
    for (int days = 0; days < 12000; ++days)
        ASSERT_EQ(jet::weekOfYear(first + days, {2, 2}), start.addDays(days).weekNumber()) << days;
}
