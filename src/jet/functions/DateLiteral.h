#pragma once
#include <QStringView>
#include <optional>

namespace jet {

/// The inside of a date literal as days since 1899-12-30: "month/day/year" (day first only where the first
/// number is no month), "year-month-day", each with or without "hour:minute[:second] [AM|PM]", or a time alone.
/// Nothing for what is no date.
std::optional<double> parseDateLiteral(QStringView text);

} // namespace jet
