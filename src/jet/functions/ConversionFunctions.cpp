// Conversions and questions about a value. They see Null: the conversions refuse it with 94.
#include "base/RunTimeError.h"
#include "jet/functions/Calendar.h"
#include "jet/functions/FunctionBodies.h"

#include <QRegularExpression>
#include <cmath>
#include <limits>

namespace jet::body {

using mkl::Long;
using mkl::throwError;
using Type = Variant::Type;
using namespace Qt::StringLiterals;
namespace err = mkl::err;

namespace {

Variant longWithin(Long least, Long most, const Variant& value) {
    const Long number = value.toLong();
    if (number < least || number > most) throwError(err::Overflow);
    return number;
}

// The number at the head of a text without blanks, 0 where there is none.
double headNumber(const QString& text) {
    static const QRegularExpression hexadecimal(u"^&H?([0-9A-F]{1,8})"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression octal(u"^&O([0-7]+)"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression decimal(u"^[+-]?(\\d+\\.?\\d*|\\.\\d+)([ED][+-]?\\d+)?"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    double number = 0;
    if (const auto match = octal.match(text); match.hasMatch()) {
        number = static_cast<double>(match.captured(1).toULongLong(nullptr, 8));
    } else if (const auto hexMatch = hexadecimal.match(text); hexMatch.hasMatch()) {
        mkl::parseNumber(u"&H"_s + hexMatch.captured(1), number);
    } else if (const auto decimalMatch = decimal.match(text); decimalMatch.hasMatch()) {
        number = decimalMatch.captured().replace(QChar(u'D'), QChar(u'E'), Qt::CaseInsensitive).toDouble();
    }
    return number;
}

} // namespace

double dateOf(const Variant& value) {
    if (!value.isText()) return value.toDate();
    const auto date = dateFromText(value.toText());
    if (!date) throwError(err::TypeMismatch);
    return *date;
}

Variant cBool(Arguments arguments) {
    const Variant& value = arguments[0];
    if (!value.isText()) return value.toBoolean();
    const QString text = value.toText().trimmed();
    if (text.compare(u"True", Qt::CaseInsensitive) == 0) return true;
    if (text.compare(u"False", Qt::CaseInsensitive) == 0) return false;
    return value.toBoolean();
}

Variant cByte(Arguments arguments) {
    return longWithin(0, 255, arguments[0]);
}

Variant cCur(Arguments arguments) {
    return Variant::currency(arguments[0].toCurrency());
}

Variant cDate(Arguments arguments) {
    return Variant::date(dateOf(arguments[0]));
}

Variant cDbl(Arguments arguments) {
    return arguments[0].toDouble();
}

Variant cInt(Arguments arguments) {
    return longWithin(std::numeric_limits<mkl::Integer>::min(), std::numeric_limits<mkl::Integer>::max(), arguments[0]);
}

Variant cLng(Arguments arguments) {
    return arguments[0].toLong();
}

Variant cSng(Arguments arguments) {
    const double number = arguments[0].toDouble();
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<mkl::Single>::max())) throwError(err::Overflow);
    return static_cast<double>(static_cast<mkl::Single>(number));
}

Variant cStr(Arguments arguments) {
    return arguments[0].toText();
}

Variant cVar(Arguments arguments) {
    return arguments[0];
}

Variant isDate(Arguments arguments) {
    const Variant& value = arguments[0];
    return value.type() == Type::Date || (value.isText() && dateFromText(value.toText()));
}

Variant isNull(Arguments arguments) {
    return arguments[0].isNull();
}

Variant isNumeric(Arguments arguments) {
    const Variant& value = arguments[0];
    double number = 0;
    if (value.isText()) return mkl::parseNumber(value.toText(), number);
    return value.isNumber() && value.type() != Type::Date;
}

Variant nz(Arguments arguments) {
    if (!arguments[0].isNull()) return arguments[0];
    return arguments.size() > 1 ? arguments[1] : Variant(QString());
}

// A blank holds the place of the sign; nothing stands before the point of a fraction.
Variant str(Arguments arguments) {
    const Variant& value = arguments[0];
    if (value.type() == Type::Date) return value.toText();
    QString text = value.isText() ? mkl::numberText(value.toDouble()) : value.toText();
    const bool negative = text.startsWith(u'-');
    if (negative) text.remove(0, 1);
    if (text.startsWith(u"0."_s)) text.remove(0, 1);
    return (negative ? u'-' : u' ') + text;
}

Variant val(Arguments arguments) {
    QString text = arguments[0].toText();
    text.removeIf([](QChar c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; });
    const double number = headNumber(text);
    if (!std::isfinite(number)) throwError(err::Overflow);
    return number;
}

} // namespace jet::body
