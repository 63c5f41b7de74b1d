#pragma once
// Sums of days and weeks that the date functions share. Weekdays count from Sunday = 1.
#include <QStringView>
#include <QtGlobal>
#include <optional>

namespace jet {

/// Reads a date, a time or both: "31.05.2001 18:30", and all that a date literal may hold ("2001-05-31",
/// "5/31/2001", "6:30 PM"). Nothing for any other text or an impossible date.
std::optional<double> dateFromText(QStringView text);

/// The year that a number of up to two digits means: 00-29 is 20xx, 30-99 is 19xx. Other numbers stay.
int fullYear(int year);
int daysInMonth(int year, int month);

/// The date on a line of whole seconds, and back; error 5 outside the calendar.
qint64 secondsOf(double date);
double dateOfSeconds(qint64 seconds);
/// Day number without the time.
qint64 dayOf(double date);
/// Day number of a date; error 5 outside the calendar.
qint64 dayNumber(int year, int month, int day);

/// How weeks are counted; 0 stands for the custom of the country: Monday, first week of four days.
struct WeekRule {
    int firstDay = 1;  ///< 1 Sunday … 7 Saturday
    int firstWeek = 1; ///< 1 the week of January 1st, 2 the first with four days, 3 the first full one
};
/// Checks the two numbers; error 5.
WeekRule weekRule(int firstDay, int firstWeek);

int weekday(qint64 day, const WeekRule& rule);      ///< 1 on the first day of the week
qint64 weekIndex(qint64 day, const WeekRule& rule); ///< number of the week on the line of days
int weekOfYear(qint64 day, const WeekRule& rule);
int dayOfYear(qint64 day);

} // namespace jet
