#include "jet/functions/DateLiteral.h"

#include "base/DateTime.h"
#include "jet/functions/Calendar.h"

#include <array>

namespace jet {

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// Reads numbers and what stands between them, from left to right.
class Reader {
public:
    explicit Reader(QStringView text)
        : rest_(text.trimmed()) {}

    bool atEnd() const { return rest_.isEmpty(); }

    // A number of at most four digits.
    std::optional<int> number() {
        qsizetype count = 0;
        while (count < rest_.size() && isDigit(rest_[count]))
            ++count;
        if (count == 0 || count > 4) return {};
        const int value = rest_.first(count).toInt();
        lastDigits_ = count;
        rest_ = rest_.sliced(count);
        return value;
    }
    qsizetype lastDigits() const { return lastDigits_; }

    bool accept(QChar c) {
        if (!rest_.startsWith(c)) return false;
        rest_ = rest_.sliced(1);
        return true;
    }
    bool acceptWord(QStringView word) {
        if (!rest_.startsWith(word, Qt::CaseInsensitive)) return false;
        rest_ = rest_.sliced(word.size());
        return true;
    }
    bool skipBlanks() {
        const qsizetype before = rest_.size();
        rest_ = rest_.trimmed();
        return rest_.size() != before;
    }
    bool isTime() const {
        qsizetype count = 0;
        while (count < rest_.size() && isDigit(rest_[count]))
            ++count;
        return count > 0 && count < rest_.size() && (rest_[count] == u':' || rest_[count].isSpace());
    }

private:
    QStringView rest_;
    qsizetype lastDigits_ = 0;
};

bool readDate(Reader& reader, mkl::DateParts& parts) {
    std::array<int, 3> numbers{};
    const auto first = reader.number();
    if (!first) return false;
    const bool yearFirst = reader.lastDigits() > 2;
    const QChar separator = reader.accept(u'/') ? u'/' : u'-';
    if (separator == u'-' && !reader.accept(u'-')) return false;
    const auto second = reader.number();
    if (!second || !reader.accept(separator)) return false;
    const auto third = reader.number();
    if (!third) return false;
    numbers = {*first, *second, *third};
    if (yearFirst) {
        parts.year = numbers[0];
        parts.month = numbers[1];
        parts.day = numbers[2];
        return true;
    }
    const bool dayFirst = numbers[0] > 12;
    parts.month = numbers[dayFirst ? 1 : 0];
    parts.day = numbers[dayFirst ? 0 : 1];
    parts.year = reader.lastDigits() > 2 ? numbers[2] : fullYear(numbers[2]);
    return true;
}

bool applyHalfOfDay(Reader& reader, mkl::DateParts& parts) {
    const bool afternoon = reader.acceptWord(u"PM");
    if (!afternoon && !reader.acceptWord(u"AM")) return true;
    if (parts.hour < 1 || parts.hour > 12) return false;
    parts.hour = parts.hour % 12 + (afternoon ? 12 : 0);
    return true;
}

bool readTime(Reader& reader, mkl::DateParts& parts) {
    const auto hour = reader.number();
    if (!hour) return false;
    parts.hour = *hour;
    if (reader.accept(u':')) {
        const auto minute = reader.number();
        if (!minute) return false;
        parts.minute = *minute;
        if (reader.accept(u':')) {
            const auto second = reader.number();
            if (!second) return false;
            parts.second = *second;
        }
    }
    reader.skipBlanks();
    return applyHalfOfDay(reader, parts) && parts.hour < 24 && parts.minute < 60 && parts.second < 60;
}

// Dates outside the calendar carry over into other months, so what comes back must be what went in.
std::optional<double> exactDate(const mkl::DateParts& parts) {
    const auto days = mkl::dateFromParts(parts);
    if (!days) return {};
    const mkl::DateParts back = mkl::partsOfDate(*days);
    if (back.year != parts.year || back.month != parts.month || back.day != parts.day) return {};
    return days;
}

} // namespace

std::optional<double> parseDateLiteral(QStringView text) {
    Reader reader(text);
    mkl::DateParts parts;
    const bool hasDate = !reader.isTime();
    if (hasDate && !readDate(reader, parts)) return {};
    if (!reader.atEnd()) {
        if (hasDate && !reader.skipBlanks()) return {};
        if (!readTime(reader, parts)) return {};
    }
    if (!reader.atEnd()) return {};
    return exactDate(parts);
}

} // namespace jet
