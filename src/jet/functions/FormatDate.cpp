// Date patterns: d m y h n s q w c t, repeated for longer forms. "m" behind "h" is the minute.
#include "base/DateTime.h"
#include "base/Texts.h"
#include "jet/functions/FormatPattern.h"

#include <QStringList>
#include <algorithm>

namespace jet {

using mkl::DateParts;
using mkl::TextId;

namespace {

QString padded(int number, qsizetype digits) {
    return QString::number(number).rightJustified(digits, u'0');
}

QString nameOf(TextId names, int number) {
    return mkl::text(names).split(u' ').value(number - 1);
}

class DateFormatter {
public:
    DateFormatter(double date, QStringView pattern, const WeekRule& rule)
        : date_(date)
        , parts_(mkl::partsOfDate(date))
        , pattern_(pattern)
        , rule_(rule) {}

    QString result() {
        findHalfDay();
        for (qsizetype at = 0; at < pattern_.size();) {
            if (takeLiteral(pattern_, at, text_) || takeHalfDay(at)) continue;
            const QChar letter = pattern_[at].toLower();
            qsizetype run = 1;
            while (at + run < pattern_.size() && pattern_[at + run].toLower() == letter)
                ++run;
            if (letter.isLetter()) {
                addField(letter.unicode(), run, pattern_.sliced(at, run));
                lastLetter_ = letter.unicode();
            } else {
                text_ += pattern_.sliced(at, run);
            }
            at += run;
        }
        return text_;
    }

private:
    // "AM/PM" and "A/P" in either case, written as the pattern writes them.
    static qsizetype halfDayLength(QStringView rest) {
        if (rest.startsWith(u"AM/PM", Qt::CaseInsensitive)) return 5;
        return rest.startsWith(u"A/P", Qt::CaseInsensitive) ? 3 : 0;
    }

    void findHalfDay() {
        QString skipped;
        for (qsizetype at = 0; at < pattern_.size();)
            if (!takeLiteral(pattern_, at, skipped))
                twelveHours_ = halfDayLength(pattern_.sliced(at++)) > 0 || twelveHours_;
    }

    bool takeHalfDay(qsizetype& at) {
        const qsizetype length = halfDayLength(pattern_.sliced(at));
        if (length == 0) return false;
        const qsizetype half = length / 2;
        text_ += pattern_.sliced(parts_.hour < 12 ? at : at + half + 1, half);
        at += length;
        return true;
    }

    void addField(char16_t letter, qsizetype run, QStringView asWritten) {
        const qsizetype twoDigits = std::min<qsizetype>(run, 2);
        switch (letter) {
        case u'c': text_ += mkl::Variant::date(date_).toText(); break;
        case u'd': addDay(run); break;
        case u'h': text_ += padded(twelveHours_ ? (parts_.hour + 11) % 12 + 1 : parts_.hour, twoDigits); break;
        case u'm': addMonth(run); break;
        case u'n': text_ += padded(parts_.minute, twoDigits); break;
        case u'q': text_ += QString::number((parts_.month - 1) / 3 + 1); break;
        case u's': text_ += padded(parts_.second, twoDigits); break;
        case u'w':
            text_ += QString::number(run == 1 ? weekday(dayOf(date_), rule_) : weekOfYear(dayOf(date_), rule_));
            break;
        case u'y': addYear(run); break;
        case u't':
            if (run == 5) {
                text_ += formatDate(date_, u"hh:nn:ss", rule_);
                break;
            }
            [[fallthrough]];
        default: text_ += asWritten;
        }
    }

    void addDay(qsizetype run) {
        switch (run) {
        case 1:
        case 2: text_ += padded(parts_.day, run); break;
        case 3: text_ += nameOf(TextId::FormatDayShortNames, weekday(dayOf(date_), {})); break;
        case 4: text_ += nameOf(TextId::FormatDayNames, weekday(dayOf(date_), {})); break;
        case 5: text_ += formatDate(date_, u"dd.mm.yyyy", rule_); break;
        default: text_ += formatDate(date_, u"dddd, d. mmmm yyyy", rule_);
        }
    }

    void addMonth(qsizetype run) {
        if (lastLetter_ == u'h') {
            text_ += padded(parts_.minute, std::min<qsizetype>(run, 2));
            return;
        }
        if (run <= 2)
            text_ += padded(parts_.month, run);
        else
            text_ += nameOf(run == 3 ? TextId::FormatMonthShortNames : TextId::FormatMonthNames, parts_.month);
    }

    void addYear(qsizetype run) {
        if (run == 1)
            text_ += QString::number(dayOfYear(dayOf(date_)));
        else
            text_ += run == 2 ? padded(parts_.year % 100, 2) : padded(parts_.year, 4);
    }

    double date_;
    DateParts parts_;
    QStringView pattern_;
    WeekRule rule_;
    bool twelveHours_ = false;
    char16_t lastLetter_ = 0;
    QString text_;
};

} // namespace

QString formatDate(double date, QStringView pattern, const WeekRule& rule) {
    return DateFormatter(date, pattern, rule).result();
}

} // namespace jet
