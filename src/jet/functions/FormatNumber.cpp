// Number patterns: 0 and # are digits, then "." "," "%" and "E+". Rounding goes by the decimal digits, half away from
// zero, not by the binary value: 2.675 as "0.00" is 2.68.
#include "jet/functions/FormatPattern.h"

#include <QVarLengthArray>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace jet {

using mkl::Variant;

namespace {

// Digits without their sign and the place of the point among them.
struct Decimal {
    QByteArray digits;
    qsizetype point = 0;

    explicit Decimal(const Variant& number) {
        if (number.type() == Variant::Type::Currency) {
            digits = QByteArray::number(number.toCurrency());
            if (digits.startsWith('-')) digits.remove(0, 1);
            point = digits.size() - 4;
        } else {
            const QByteArray text = QByteArray::number(std::fabs(number.toDouble()), 'e', 14);
            const qsizetype exponent = text.indexOf('e');
            digits = text.left(exponent).replace(".", "");
            point = text.mid(exponent + 1).toInt() + 1;
        }
        dropLeadingZeros();
    }

    bool isZero() const { return digits.isEmpty(); }

    void roundTo(qsizetype decimals) {
        const qsizetype kept = point + decimals;
        if (kept >= digits.size()) return;
        const bool up = kept >= 0 && digits[kept] >= '5';
        digits.truncate(std::max<qsizetype>(kept, 0));
        if (up) increment();
        dropLeadingZeros();
    }

    QString integerPart() const {
        if (point <= 0) return {};
        return QString::fromLatin1(digits.left(point).leftJustified(point, '0'));
    }

    QString fraction(qsizetype decimals) const {
        const QByteArray leadingZeros(std::clamp<qsizetype>(-point, 0, decimals), '0');
        const QByteArray behindPoint = point > 0 ? digits.mid(point) : digits;
        return QString::fromLatin1((leadingZeros + behindPoint).leftJustified(decimals, '0', true));
    }

private:
    void increment() {
        qsizetype place = digits.size();
        while (place > 0 && digits[place - 1] == '9')
            digits[--place] = '0';
        if (place > 0) {
            ++digits[place - 1];
        } else {
            digits.prepend('1');
            ++point;
        }
    }
    void dropLeadingZeros() {
        qsizetype zeros = 0;
        while (zeros < digits.size() && digits[zeros] == '0')
            ++zeros;
        digits.remove(0, zeros);
        point = digits.isEmpty() ? 0 : point - zeros;
    }
};

struct Part {
    enum class Kind : quint8 { Literal, Integer, Point, Fraction, Exponent };
    Kind kind;
    QString literal = {};
    bool required = false; // of a digit: "0", not "#"
    qsizetype digits = 0;  // of an exponent
    bool plusSign = false; // likewise
};
using Kind = Part::Kind;

class NumberPattern {
public:
    explicit NumberPattern(QStringView section);
    QString apply(Decimal number, bool negative) const;

private:
    void addDigit(QChar c);
    bool takeExponent(QStringView section, qsizetype& at);
    void endInteger();
    qsizetype count(Kind kind) const { return std::ranges::count(parts_, kind, &Part::kind); }
    qsizetype requiredIntegerDigits() const;
    qsizetype requiredFractionDigits() const;
    bool hasExponent() const { return count(Kind::Exponent) > 0; }
    qsizetype takeExponentOf(Decimal& number) const;
    QString groupedInteger(const QString& digits, qsizetype from, qsizetype to) const;

    QList<Part> parts_;
    bool pointSeen_ = false;
    bool grouped_ = false;
    int pendingCommas_ = 0; // group digits if more of them follow, else divide by a thousand each
    int powerOfTen_ = 0;
};

NumberPattern::NumberPattern(QStringView section) {
    for (qsizetype at = 0; at < section.size();) {
        QString literal;
        if (takeLiteral(section, at, literal)) {
            parts_.append({Kind::Literal, literal});
            continue;
        }
        if (takeExponent(section, at)) continue;
        const QChar c = section[at++];
        if (c == u'0' || c == u'#') {
            addDigit(c);
        } else if (c == u'.' && !pointSeen_) {
            endInteger();
            parts_.append({Kind::Point});
        } else if (c == u',' && !pointSeen_) {
            ++pendingCommas_;
        } else {
            if (c == u'%') powerOfTen_ += 2;
            parts_.append({Kind::Literal, c});
        }
    }
    if (!pointSeen_) endInteger();
}

void NumberPattern::addDigit(QChar c) {
    if (!pointSeen_ && pendingCommas_ > 0) {
        grouped_ = true;
        pendingCommas_ = 0;
    }
    parts_.append({pointSeen_ ? Kind::Fraction : Kind::Integer, {}, c == u'0'});
}

void NumberPattern::endInteger() {
    powerOfTen_ -= 3 * pendingCommas_;
    pointSeen_ = true;
}

bool NumberPattern::takeExponent(QStringView section, qsizetype& at) {
    const QStringView rest = section.sliced(at);
    const bool plus = rest.startsWith(u"E+", Qt::CaseInsensitive);
    if (!plus && !rest.startsWith(u"E-", Qt::CaseInsensitive)) return false;
    qsizetype end = 2;
    while (end < rest.size() && (rest[end] == u'0' || rest[end] == u'#'))
        ++end;
    if (end == 2) return false;
    Part part{Kind::Exponent, QString(rest[0])};
    part.digits = end - 2;
    part.plusSign = plus;
    parts_.append(part);
    at += end;
    return true;
}

// From the first 0 to the point, from the point to the last 0.
qsizetype NumberPattern::requiredIntegerDigits() const {
    qsizetype required = 0;
    for (const Part& part : parts_)
        if (part.kind == Kind::Integer && (part.required || required > 0)) ++required;
    return required;
}

qsizetype NumberPattern::requiredFractionDigits() const {
    qsizetype place = 0, required = 0;
    for (const Part& part : parts_) {
        if (part.kind != Kind::Fraction) continue;
        ++place;
        if (part.required) required = place;
    }
    return required;
}

// Leaves as many digits before the point as the pattern has.
qsizetype NumberPattern::takeExponentOf(Decimal& number) const {
    if (number.isZero()) return 0;
    const qsizetype integerDigits = std::max<qsizetype>(count(Kind::Integer), 1);
    qsizetype exponent = number.point - integerDigits;
    number.point = integerDigits;
    number.roundTo(count(Kind::Fraction));
    exponent += number.point - integerDigits; // 9.99 became 10.0
    number.point = integerDigits;
    return exponent;
}

QString NumberPattern::groupedInteger(const QString& digits, qsizetype from, qsizetype to) const {
    QString text;
    for (qsizetype place = from; place < to; ++place) {
        text += digits[place];
        const qsizetype behind = digits.size() - 1 - place;
        if (grouped_ && behind > 0 && behind % 3 == 0) text += u',';
    }
    return text;
}

QString NumberPattern::apply(Decimal number, bool negative) const {
    if (!number.isZero()) number.point += powerOfTen_;
    const qsizetype exponent = hasExponent() ? takeExponentOf(number) : 0;
    number.roundTo(count(Kind::Fraction));
    const QString integer = number.integerPart().rightJustified(requiredIntegerDigits(), u'0');
    QString fraction = number.fraction(count(Kind::Fraction));
    while (fraction.size() > requiredFractionDigits() && fraction.endsWith(u'0'))
        fraction.chop(1);

    QString text;
    qsizetype integerPlaces = count(Kind::Integer), shown = 0, fractionPlace = 0;
    const bool hasDigits = integerPlaces + count(Kind::Fraction) > 0;
    if (negative && hasDigits && !number.isZero()) text += u'-';
    for (const Part& part : parts_) {
        switch (part.kind) {
        case Kind::Literal: text += part.literal; break;
        case Kind::Integer: { // the first place takes all digits for which there are no places
            const qsizetype end = std::max<qsizetype>(integer.size() - --integerPlaces, 0);
            text += groupedInteger(integer, shown, end);
            shown = end;
            break;
        }
        case Kind::Point:
            text += groupedInteger(integer, shown, integer.size());
            shown = integer.size();
            text += u'.';
            break;
        case Kind::Fraction:
            text += QStringView(fraction).sliced(std::min(fractionPlace++, fraction.size())).left(1);
            break;
        case Kind::Exponent:
            text += part.literal + (exponent < 0    ? QStringLiteral("-")
                                    : part.plusSign ? QStringLiteral("+")
                                                    : QString());
            text += QString::number(std::abs(exponent)).rightJustified(part.digits, u'0');
        }
    }
    return text;
}

} // namespace

QString formatNumber(const Variant& number, QStringView pattern) {
    const QList<QStringView> sections = patternSections(pattern);
    const double value = number.toDouble();
    const qsizetype wanted = value < 0 ? 1 : value > 0 ? 0 : 2;
    const bool own = wanted < sections.size() && !sections[wanted].isEmpty();
    return NumberPattern(sections[own ? wanted : 0]).apply(Decimal(number), value < 0 && !(own && wanted == 1));
}

} // namespace jet
