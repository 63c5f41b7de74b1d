#pragma once
#include "base/types.h"

#include <QByteArray>
#include <QString>
#include <variant>

namespace mkl {

/// A value of the catalogue, or Null. Currency is a whole number of ten-thousandths; a date is days since 1899-12-30.
class Variant {
public:
    enum class Type : quint8 { Null, Boolean, Int, Double, Currency, Date, Text, Binary };

    Variant() = default;
    Variant(bool value)
        : value_(value) {}
    Variant(Long value)
        : value_(value) {}
    Variant(double value)
        : value_(value) {}
    Variant(QString value)
        : value_(std::move(value)) {}
    Variant(QByteArray value)
        : value_(std::move(value)) {}
    Variant(const void*) = delete; // a pointer is no yes/no value

    static Variant date(double days);
    static Variant currency(qint64 tenThousandths);

    Type type() const { return static_cast<Type>(value_.index()); }
    bool isNull() const { return type() == Type::Null; }
    bool isNumber() const; ///< yes/no, Long, Double, Currency or date
    bool isText() const { return type() == Type::Text; }

    /// Conversions. Null raises 94, a text that is no number 13, a number out of range 6.
    Long toLong() const;     ///< rounds half to even; true is -1
    double toDouble() const; ///< true is -1
    bool toBoolean() const;  ///< any number but 0; a text as its number
    double toDate() const;   ///< a text in ISO form
    qint64 toCurrency() const;
    QString
    toText() const; ///< as a German desktop would print it, but with a decimal point; binary data as hexadecimal digits
    QByteArray toBinary() const; ///< of binary data only

    /// Same type and same value; texts to the letter. Null equals Null.
    bool operator==(const Variant& other) const = default;

private:
    struct CurrencyValue {
        qint64 tenThousandths;
        bool operator==(const CurrencyValue&) const = default;
    };
    struct DateValue {
        double days;
        bool operator==(const DateValue&) const = default;
    };
    // In the order of Type.
    std::variant<std::monostate, bool, Long, double, CurrencyValue, DateValue, QString, QByteArray> value_;
};

/// Whole number, halves to the even one, checked against the range of Long (error 6).
Long roundToLong(double value);
/// The whole text as a number (blanks around it allowed, decimal point, exponent, &H), or false.
bool parseNumber(QStringView text, double& number);
/// Shortest decimal form, as texts of numbers are made.
QString numberText(double value);
/// Up to four decimals, without trailing zeros.
QString currencyText(qint64 tenThousandths);

} // namespace mkl
