#include "jet/functions/Calendar.h"

#include "base/DateTime.h"
#include "base/RunTimeError.h"
#include "jet/functions/DateLiteral.h"

#include <QDate>
#include <QRegularExpression>
#include <cmath>

namespace jet {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 secondsPerDay = 86400;

qint64 floorDivide(qint64 dividend, qint64 divisor) {
    return dividend >= 0 ? dividend / divisor : (dividend - divisor + 1) / divisor;
}

int yearOf(qint64 day) {
    return mkl::partsOfDate(static_cast<double>(day)).year;
}

} // namespace

std::optional<double> dateFromText(QStringView text) {
    static const QRegularExpression german(u"^\\s*(\\d{1,2})\\.(\\d{1,2})\\.(\\d{4}|\\d{1,2})(\\s.*)?$"_s);
    if (!text.contains(u'.')) return parseDateLiteral(text);
    const QRegularExpressionMatch match = german.match(text.toString());
    if (!match.hasMatch()) return {};
    const int written = match.capturedView(3).toInt();
    const int year = match.capturedLength(3) == 4 ? written : fullYear(written);
    return parseDateLiteral(QString::asprintf("%04d-", year) + match.captured(2) + u'-' + match.captured(1) +
                            match.captured(4));
}

int fullYear(int year) {
    if (year < 0 || year > 99) return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

int daysInMonth(int year, int month) {
    return QDate(year, month, 1).daysInMonth();
}

qint64 secondsOf(double date) {
    const double days = std::trunc(date);
    return static_cast<qint64>(days) * secondsPerDay +
           std::llround(std::fabs(date - days) * static_cast<double>(secondsPerDay));
}

double dateOfSeconds(qint64 seconds) {
    const qint64 days = floorDivide(seconds, secondsPerDay);
    const double date = static_cast<double>(days);
    if (date < mkl::firstDay || date > mkl::lastDay) mkl::throwError(mkl::err::InvalidArgument);
    const double time = static_cast<double>(seconds - days * secondsPerDay) / static_cast<double>(secondsPerDay);
    return days >= 0 ? date + time : date - time;
}

qint64 dayOf(double date) {
    return floorDivide(secondsOf(date), secondsPerDay);
}

qint64 dayNumber(int year, int month, int day) {
    const auto date = mkl::dateFromParts({year, month, day, 0, 0, 0});
    if (!date) mkl::throwError(mkl::err::InvalidArgument);
    return static_cast<qint64>(*date);
}

WeekRule weekRule(int firstDay, int firstWeek) {
    if (firstDay < 0 || firstDay > 7 || firstWeek < 0 || firstWeek > 3) mkl::throwError(mkl::err::InvalidArgument);
    return {firstDay == 0 ? 2 : firstDay, firstWeek == 0 ? 2 : firstWeek};
}

// Day 1 of the line, 1899-12-31, was a Sunday.
qint64 weekIndex(qint64 day, const WeekRule& rule) {
    return floorDivide(day - rule.firstDay, 7);
}

int weekday(qint64 day, const WeekRule& rule) {
    return static_cast<int>(day - rule.firstDay - weekIndex(day, rule) * 7) + 1;
}

int weekOfYear(qint64 day, const WeekRule& rule) {
    // The week that holds this day of January is the first one.
    const int anchor = rule.firstWeek == 1 ? 1 : rule.firstWeek == 2 ? 4 : 7;
    const int year = yearOf(day);
    const qint64 week = weekIndex(day, rule);
    const qint64 firstOfNext = weekIndex(dayNumber(year, 12, 31) + anchor, rule);
    if (rule.firstWeek != 1 && week >= firstOfNext) return 1;
    qint64 first = weekIndex(dayNumber(year, 1, anchor), rule);
    if (week < first) first = weekIndex(dayNumber(year - 1, 1, anchor), rule);
    return static_cast<int>(week - first) + 1;
}

int dayOfYear(qint64 day) {
    return static_cast<int>(day - dayNumber(yearOf(day), 1, 1)) + 1;
}

} // namespace jet
