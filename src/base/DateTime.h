#pragma once
// Dates as days since 1899-12-30, the fraction being the time of day. The fraction counts forward
// for negative numbers too: -1.75 is 1899-12-29 18:00:00. Local time, no zones.
#include <QString>
#include <optional>

namespace mkl {

struct DateParts {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;
};

/// Smallest and largest day number of the calendar: years 100 to 9999.
inline constexpr double firstDay = -657434.0;
inline constexpr double lastDay = 2958465.0;

/// Day number of the parts; months and days outside their range carry over. Nothing outside the calendar.
std::optional<double> dateFromParts(const DateParts& parts);
/// The parts, seconds rounded.
DateParts partsOfDate(double date);

/// "YYYY-MM-DD HH:MM:SS", as the database stores it.
QString isoFromDate(double date);
/// Reads "YYYY-MM-DD", with or without " HH:MM[:SS]" (also with "T"); nothing for an impossible date.
std::optional<double> dateFromIso(QStringView text);

} // namespace mkl
