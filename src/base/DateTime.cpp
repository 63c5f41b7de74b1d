#include "base/DateTime.h"

#include <cmath>

namespace mkl {

namespace {

// Days since 1970-01-01 of the proleptic Gregorian calendar.
long long daysFromCivil(long long year, int month, int day) {
    year -= month <= 2;
    const long long era = (year >= 0 ? year : year - 399) / 400;
    const auto yearOfEra = static_cast<unsigned>(year - era * 400);
    const unsigned dayOfYear =
        (153U * static_cast<unsigned>(month + (month > 2 ? -3 : 9)) + 2) / 5 + static_cast<unsigned>(day) - 1;
    const unsigned dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + static_cast<long long>(dayOfEra) - 719468;
}

void civilFromDays(long long days, DateParts& parts) {
    days += 719468;
    const long long era = (days >= 0 ? days : days - 146096) / 146097;
    const auto dayOfEra = static_cast<unsigned>(days - era * 146097);
    const unsigned yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned shifted = (5 * dayOfYear + 2) / 153;
    parts.day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    parts.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
    parts.year = static_cast<int>(static_cast<long long>(yearOfEra) + era * 400 + (parts.month <= 2));
}

constexpr long long epochDay = -25569; // 1899-12-30 before 1970-01-01
constexpr long long secondsPerDay = 86400;

std::optional<int> digits(QStringView text, qsizetype from, qsizetype count) {
    if (from + count > text.size()) return {};
    int value = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        if (text[i] < u'0' || text[i] > u'9') return {};
        value = value * 10 + (text[i].unicode() - u'0');
    }
    return value;
}

bool isAt(QStringView text, qsizetype at, QChar c) {
    return at < text.size() && text[at] == c;
}

} // namespace

std::optional<double> dateFromParts(const DateParts& parts) {
    const long long monthIndex = static_cast<long long>(parts.year) * 12 + parts.month - 1;
    const long long year = monthIndex >= 0 ? monthIndex / 12 : (monthIndex - 11) / 12;
    long long days = daysFromCivil(year, static_cast<int>(monthIndex - year * 12) + 1, 1) + parts.day - 1 - epochDay;
    long long seconds = parts.hour * 3600LL + parts.minute * 60LL + parts.second;
    days += seconds >= 0 ? seconds / secondsPerDay : (seconds - secondsPerDay + 1) / secondsPerDay;
    seconds = ((seconds % secondsPerDay) + secondsPerDay) % secondsPerDay;
    if (static_cast<double>(days) < firstDay || static_cast<double>(days) > lastDay) return {};
    const double fraction = static_cast<double>(seconds) / secondsPerDay;
    return days >= 0 ? static_cast<double>(days) + fraction : static_cast<double>(days) - fraction;
}

DateParts partsOfDate(double date) {
    auto days = static_cast<long long>(std::trunc(date));
    long long seconds = std::llround(std::fabs(date - static_cast<double>(days)) * secondsPerDay);
    if (seconds == secondsPerDay) {
        seconds = 0;
        ++days;
    }
    DateParts parts;
    civilFromDays(days + epochDay, parts);
    parts.hour = static_cast<int>(seconds / 3600);
    parts.minute = static_cast<int>(seconds / 60 % 60);
    parts.second = static_cast<int>(seconds % 60);
    return parts;
}

QString isoFromDate(double date) {
    const DateParts p = partsOfDate(date);
    QString text = QStringLiteral("0000-00-00 00:00:00");
    // By hand: an import makes this text for every row.
    const auto put = [&text](qsizetype end, int width, int number) {
        for (; width > 0; --width, number /= 10)
            text[--end] = QChar(u'0' + number % 10);
    };
    put(4, 4, p.year);
    put(7, 2, p.month);
    put(10, 2, p.day);
    put(13, 2, p.hour);
    put(16, 2, p.minute);
    put(19, 2, p.second);
    return text;
}

std::optional<double> dateFromIso(QStringView text) {
    text = text.trimmed();
    const auto year = digits(text, 0, 4), month = digits(text, 5, 2), day = digits(text, 8, 2);
    if (!year || !month || !day || !isAt(text, 4, u'-') || !isAt(text, 7, u'-')) return {};
    DateParts parts{*year, *month, *day, 0, 0, 0};
    if (text.size() > 10) {
        const auto hour = digits(text, 11, 2), minute = digits(text, 14, 2), second = digits(text, 17, 2);
        const bool separated = (text[10] == u' ' || text[10] == u'T') && isAt(text, 13, u':');
        const bool endsWell = text.size() == 16 || (text.size() == 19 && isAt(text, 16, u':') && second);
        if (!hour || !minute || !separated || !endsWell) return {};
        parts.hour = *hour;
        parts.minute = *minute;
        parts.second = second.value_or(0);
    }
    const auto date = dateFromParts(parts);
    if (!date) return {};
    const DateParts back = partsOfDate(*date);
    const bool possible = back.year == parts.year && back.month == parts.month && back.day == parts.day &&
                          back.hour == parts.hour && back.minute == parts.minute && back.second == parts.second;
    return possible ? date : std::nullopt;
}

} // namespace mkl
