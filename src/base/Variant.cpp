#include "base/Variant.h"

#include "base/DateTime.h"
#include "base/RunTimeError.h"

#include <cmath>
#include <limits>

namespace mkl {

Variant Variant::date(double days) {
    Variant result;
    result.value_ = DateValue{days};
    return result;
}

Variant Variant::currency(qint64 tenThousandths) {
    Variant result;
    result.value_ = CurrencyValue{tenThousandths};
    return result;
}

bool Variant::isNumber() const {
    return type() >= Type::Boolean && type() <= Type::Date;
}

Long Variant::toLong() const {
    if (const auto* number = std::get_if<Long>(&value_)) return *number;
    return roundToLong(toDouble());
}

double Variant::toDouble() const {
    switch (type()) {
    case Type::Null: throwError(err::InvalidNull);
    case Type::Boolean: return std::get<bool>(value_) ? -1.0 : 0.0;
    case Type::Int: return std::get<Long>(value_);
    case Type::Double: return std::get<double>(value_);
    case Type::Currency: return static_cast<double>(std::get<CurrencyValue>(value_).tenThousandths) / 10000.0;
    case Type::Date: return std::get<DateValue>(value_).days;
    case Type::Text: {
        double number = 0;
        if (!parseNumber(std::get<QString>(value_), number)) throwError(err::TypeMismatch);
        return number;
    }
    case Type::Binary: break;
    }
    throwError(err::TypeMismatch);
}

bool Variant::toBoolean() const {
    if (const auto* truth = std::get_if<bool>(&value_)) return *truth;
    return toDouble() != 0.0;
}

double Variant::toDate() const {
    if (const auto* text = std::get_if<QString>(&value_)) {
        const auto date = dateFromIso(*text);
        if (!date) throwError(err::TypeMismatch);
        return *date;
    }
    const double days = toDouble();
    if (!(days > firstDay - 1 && days < lastDay + 1)) throwError(err::Overflow);
    return days;
}

qint64 Variant::toCurrency() const {
    if (const auto* currency = std::get_if<CurrencyValue>(&value_)) return currency->tenThousandths;
    const double scaled = std::nearbyint(toDouble() * 10000.0);
    if (!(std::fabs(scaled) < 9.2233720368547758e18)) throwError(err::Overflow);
    return static_cast<qint64>(scaled);
}

QString Variant::toText() const {
    switch (type()) {
    case Type::Null: throwError(err::InvalidNull);
    case Type::Boolean: return std::get<bool>(value_) ? QStringLiteral("-1") : QStringLiteral("0");
    case Type::Int: return QString::number(std::get<Long>(value_));
    case Type::Double: return numberText(std::get<double>(value_));
    case Type::Currency: return currencyText(std::get<CurrencyValue>(value_).tenThousandths);
    case Type::Date: {
        const double days = std::get<DateValue>(value_).days;
        const DateParts p = partsOfDate(days);
        const QString day = QString::asprintf("%02d.%02d.%04d", p.day, p.month, p.year);
        const QString time = QString::asprintf("%02d:%02d:%02d", p.hour, p.minute, p.second);
        if (std::trunc(days) == days) return day;
        return std::trunc(days) == 0.0 ? time : day + u' ' + time;
    }
    case Type::Text: return std::get<QString>(value_);
    case Type::Binary: return QString::fromLatin1(std::get<QByteArray>(value_).toHex());
    }
    throwError(err::TypeMismatch);
}

QByteArray Variant::toBinary() const {
    if (isNull()) throwError(err::InvalidNull);
    const auto* bytes = std::get_if<QByteArray>(&value_);
    if (!bytes) throwError(err::TypeMismatch);
    return *bytes;
}

Long roundToLong(double value) {
    const double rounded = std::nearbyint(value);
    const bool fits = rounded >= static_cast<double>(std::numeric_limits<Long>::min()) &&
                      rounded <= static_cast<double>(std::numeric_limits<Long>::max());
    if (!fits) throwError(err::Overflow);
    return static_cast<Long>(rounded);
}

bool parseNumber(QStringView text, double& number) {
    text = text.trimmed();
    bool ok = false;
    if (text.startsWith(u"&H", Qt::CaseInsensitive)) {
        const qulonglong bits = text.mid(2).toULongLong(&ok, 16);
        if (!ok || bits > std::numeric_limits<quint32>::max()) return false;
        // Four digits are a 16-bit number with its sign, more of them a 32-bit one.
        number = bits <= 0xFFFF && text.size() <= 6 ? static_cast<double>(static_cast<qint16>(bits))
                                                    : static_cast<double>(static_cast<qint32>(bits));
        return true;
    }
    for (const QChar c : text) // neither "inf" nor "nan" is a number here
        if (!((c >= u'0' && c <= u'9') || c == u'.' || c == u'+' || c == u'-' || c == u'e' || c == u'E')) return false;
    number = text.toDouble(&ok);
    return ok && std::isfinite(number);
}

QString numberText(double value) {
    if (value == 0.0) return QStringLiteral("0"); // no "-0"
    return QString::number(value, 'G', 15);
}

QString currencyText(qint64 tenThousandths) {
    const bool negative = tenThousandths < 0;
    const quint64 magnitude =
        negative ? 0 - static_cast<quint64>(tenThousandths) : static_cast<quint64>(tenThousandths);
    QString text = QString::number(magnitude / 10000);
    if (const auto fraction = static_cast<int>(magnitude % 10000)) {
        QString decimals = QString::asprintf("%04d", fraction);
        while (decimals.endsWith(u'0'))
            decimals.chop(1);
        text += u'.' + decimals;
    }
    return negative ? u'-' + text : text;
}

} // namespace mkl
