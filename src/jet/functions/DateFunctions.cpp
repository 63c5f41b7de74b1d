// Functions on dates. Times are whole seconds; a text counts as the date that it means, else error 13.
#include "base/Clock.h"
#include "base/DateTime.h"
#include "base/RunTimeError.h"
#include "jet/functions/Calendar.h"
#include "jet/functions/FunctionBodies.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace jet::body {

using mkl::DateParts;
using mkl::Integer;
using mkl::Long;
using mkl::throwError;
namespace err = mkl::err;

namespace {

constexpr qint64 secondsPerDay = 86400;

enum class Interval : quint8 { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval intervalOf(const Variant& value) {
    struct Row {
        QStringView name;
        Interval interval;
    };
    static constexpr Row rows[] = {{u"yyyy", Interval::Year},   {u"q", Interval::Quarter}, {u"m", Interval::Month},
                                   {u"y", Interval::DayOfYear}, {u"d", Interval::Day},     {u"w", Interval::Weekday},
                                   {u"ww", Interval::Week},     {u"h", Interval::Hour},    {u"n", Interval::Minute},
                                   {u"s", Interval::Second}};
    const QString name = value.toText();
    for (const Row& row : rows)
        if (row.name.compare(name, Qt::CaseInsensitive) == 0) return row.interval;
    throwError(err::InvalidArgument);
}

qint64 secondsIn(Interval interval) {
    switch (interval) {
    case Interval::Second: return 1;
    case Interval::Minute: return 60;
    case Interval::Hour: return 3600;
    case Interval::Week: return 7 * secondsPerDay;
    default: return secondsPerDay;
    }
}

WeekRule weekRuleOf(Arguments arguments, size_t place) {
    return weekRule(longOr(arguments, place, 1), longOr(arguments, place + 1, 1));
}

DateParts partsOf(const Variant& value) {
    return mkl::partsOfDate(dateOf(value));
}

int quarterOf(const DateParts& parts) {
    return (parts.month - 1) / 3 + 1;
}

Variant checkedDate(const DateParts& parts) {
    const auto date = mkl::dateFromParts(parts);
    if (!date) throwError(err::InvalidArgument);
    return Variant::date(*date);
}

int integerOf(const Variant& value) {
    const Long number = value.toLong();
    if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max())
        throwError(err::Overflow);
    return number;
}

// A day that the month lacks becomes its last one.
Variant addMonths(double date, qint64 months) {
    DateParts parts = mkl::partsOfDate(date);
    const qint64 month = parts.year * 12LL + parts.month - 1 + months;
    if (month < 100 * 12LL || month >= 10000 * 12LL) throwError(err::InvalidArgument);
    parts.year = static_cast<int>(month / 12);
    parts.month = static_cast<int>(month % 12) + 1;
    parts.day = std::min(parts.day, daysInMonth(parts.year, parts.month));
    return checkedDate(parts);
}

qint64 bordersBetween(Interval interval, double from, double to, const WeekRule& rule) {
    const DateParts first = mkl::partsOfDate(from), last = mkl::partsOfDate(to);
    const qint64 years = last.year - first.year;
    switch (interval) {
    case Interval::Year: return years;
    case Interval::Quarter: return years * 4 + quarterOf(last) - quarterOf(first);
    case Interval::Month: return years * 12 + last.month - first.month;
    case Interval::Weekday: return (dayOf(to) - dayOf(from)) / 7;
    case Interval::Week: return weekIndex(dayOf(to), rule) - weekIndex(dayOf(from), rule);
    default: break;
    }
    const qint64 unit = secondsIn(interval);
    const auto index = [unit](double date) { return (secondsOf(date) - secondsOf(mkl::firstDay)) / unit; };
    return index(to) - index(from);
}

} // namespace

Variant date(Arguments /*none*/) {
    return Variant::date(std::trunc(mkl::clock().now()));
}

Variant now(Arguments /*none*/) {
    return Variant::date(mkl::clock().now());
}

Variant time(Arguments /*none*/) {
    const double now = mkl::clock().now();
    return Variant::date(std::fabs(now - std::trunc(now)));
}

Variant dateAdd(Arguments arguments) {
    const Interval interval = intervalOf(arguments[0]);
    const qint64 number = arguments[1].toLong();
    const double from = dateOf(arguments[2]);
    switch (interval) {
    case Interval::Year: return addMonths(from, number * 12);
    case Interval::Quarter: return addMonths(from, number * 3);
    case Interval::Month: return addMonths(from, number);
    default: return Variant::date(dateOfSeconds(secondsOf(from) + number * secondsIn(interval)));
    }
}

Variant dateDiff(Arguments arguments) {
    const qint64 borders =
        bordersBetween(intervalOf(arguments[0]), dateOf(arguments[1]), dateOf(arguments[2]), weekRuleOf(arguments, 3));
    if (borders < std::numeric_limits<Long>::min() || borders > std::numeric_limits<Long>::max())
        throwError(err::Overflow);
    return static_cast<Long>(borders);
}

Variant datePart(Arguments arguments) {
    const double date = dateOf(arguments[1]);
    const DateParts parts = mkl::partsOfDate(date);
    const WeekRule rule = weekRuleOf(arguments, 2);
    switch (intervalOf(arguments[0])) {
    case Interval::Year: return Long(parts.year);
    case Interval::Quarter: return Long(quarterOf(parts));
    case Interval::Month: return Long(parts.month);
    case Interval::DayOfYear: return Long(dayOfYear(dayOf(date)));
    case Interval::Day: return Long(parts.day);
    case Interval::Weekday: return Long(jet::weekday(dayOf(date), rule));
    case Interval::Week: return Long(weekOfYear(dayOf(date), rule));
    case Interval::Hour: return Long(parts.hour);
    case Interval::Minute: return Long(parts.minute);
    case Interval::Second: return Long(parts.second);
    }
    throwError(err::InvalidArgument);
}

// Months and days outside their range carry over, those below 1 backwards.
Variant dateSerial(Arguments arguments) {
    return checkedDate({fullYear(integerOf(arguments[0])), integerOf(arguments[1]), integerOf(arguments[2]), 0, 0, 0});
}

Variant timeSerial(Arguments arguments) {
    return checkedDate({1899, 12, 30, integerOf(arguments[0]), integerOf(arguments[1]), integerOf(arguments[2])});
}

Variant dateValue(Arguments arguments) {
    return Variant::date(std::trunc(dateOf(arguments[0])));
}

Variant timeValue(Arguments arguments) {
    const double date = dateOf(arguments[0]);
    return Variant::date(std::fabs(date - std::trunc(date)));
}

Variant day(Arguments arguments) {
    return Long(partsOf(arguments[0]).day);
}

Variant hour(Arguments arguments) {
    return Long(partsOf(arguments[0]).hour);
}

Variant minute(Arguments arguments) {
    return Long(partsOf(arguments[0]).minute);
}

Variant month(Arguments arguments) {
    return Long(partsOf(arguments[0]).month);
}

Variant second(Arguments arguments) {
    return Long(partsOf(arguments[0]).second);
}

Variant weekday(Arguments arguments) {
    const WeekRule rule = weekRule(longOr(arguments, 1, 1), 1);
    return Long(jet::weekday(dayOf(dateOf(arguments[0])), rule));
}

Variant year(Arguments arguments) {
    return Long(partsOf(arguments[0]).year);
}

} // namespace jet::body
