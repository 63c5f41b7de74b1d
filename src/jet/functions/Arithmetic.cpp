// The arithmetic operators. Two Longs give a Long, a Currency with an exact number gives a Currency, a date
// moved by a number is a date, all else is floating.
#include "jet/functions/Operands.h"
#include "jet/functions/Operators.h"

#include <QtNumeric>
#include <cmath>
#include <limits>

namespace jet {

using mkl::Long;
using mkl::throwError;
using Type = Variant::Type;
namespace err = mkl::err;

namespace {

bool isWhole(const Variant& value) {
    return value.type() == Type::Int || value.type() == Type::Boolean;
}

bool isExact(const Variant& value) {
    return isWhole(value) || value.type() == Type::Currency;
}

bool isDate(const Variant& value) {
    return value.type() == Type::Date;
}

Variant checkedLong(qint64 value) {
    if (value < std::numeric_limits<Long>::min() || value > std::numeric_limits<Long>::max()) throwError(err::Overflow);
    return static_cast<Long>(value);
}

Variant checkedDouble(double value) {
    if (!std::isfinite(value)) throwError(err::Overflow);
    return value;
}

Variant checkedDate(double days) {
    return Variant::date(Variant(days).toDate());
}

// Longs and Currencies alike in ten-thousandths.
qint64 tenThousandths(const Variant& value) {
    return value.toCurrency();
}

qint64 roundedOperand(const Variant& value) {
    return mkl::roundToLong(numberOf(value));
}

// For + and -: the dates are settled by the caller.
template<class Whole, class Floating>
Variant sum(const Variant& a, const Variant& b, Whole whole, Floating floating) {
    if (isWhole(a) && isWhole(b)) {
        qint64 result = 0;
        whole(a.toLong(), b.toLong(), &result);
        return checkedLong(result);
    }
    if (isExact(a) && isExact(b)) {
        qint64 result = 0;
        if (whole(tenThousandths(a), tenThousandths(b), &result)) throwError(err::Overflow);
        return Variant::currency(result);
    }
    return checkedDouble(floating(numberOf(a), numberOf(b)));
}

Variant currencyProduct(const Variant& a, const Variant& b) {
    qint64 product = 0;
    if (isWhole(a) || isWhole(b)) {
        const Variant& factor = isWhole(a) ? a : b;
        const Variant& amount = isWhole(a) ? b : a;
        if (qMulOverflow(tenThousandths(amount), qint64(factor.toLong()), &product)) throwError(err::Overflow);
        return Variant::currency(product);
    }
    return Variant::currency(Variant(a.toDouble() * b.toDouble()).toCurrency());
}

} // namespace

Variant add(const Variant& a, const Variant& b) {
    if (anyNull(a, b)) return {};
    if (a.isText() && b.isText()) return a.toText() + b.toText();
    if (isDate(a) || isDate(b)) return checkedDate(numberOf(a) + numberOf(b));
    return sum(
        a, b, [](qint64 x, qint64 y, qint64* result) { return qAddOverflow(x, y, result); },
        [](double x, double y) { return x + y; });
}

Variant subtract(const Variant& a, const Variant& b) {
    if (anyNull(a, b)) return {};
    if (isDate(a) && !isDate(b)) return checkedDate(a.toDouble() - numberOf(b));
    return sum(
        a, b, [](qint64 x, qint64 y, qint64* result) { return qSubOverflow(x, y, result); },
        [](double x, double y) { return x - y; });
}

Variant multiply(const Variant& a, const Variant& b) {
    if (anyNull(a, b)) return {};
    if (isWhole(a) && isWhole(b)) return checkedLong(qint64(a.toLong()) * b.toLong());
    if (isExact(a) && isExact(b)) return currencyProduct(a, b);
    return checkedDouble(numberOf(a) * numberOf(b));
}

Variant divide(const Variant& a, const Variant& b) {
    if (anyNull(a, b)) return {};
    const double dividend = numberOf(a), divisor = numberOf(b);
    if (divisor == 0.0) throwError(dividend == 0.0 ? err::Overflow : err::DivisionByZero);
    return checkedDouble(dividend / divisor);
}

Variant intDivide(const Variant& a, const Variant& b) {
    if (anyNull(a, b)) return {};
    const qint64 dividend = roundedOperand(a), divisor = roundedOperand(b);
    if (divisor == 0) throwError(err::DivisionByZero);
    return checkedLong(dividend / divisor);
}

Variant modulo(const Variant& a, const Variant& b) {
    if (anyNull(a, b)) return {};
    const qint64 dividend = roundedOperand(a), divisor = roundedOperand(b);
    if (divisor == 0) throwError(err::DivisionByZero);
    return static_cast<Long>(dividend % divisor);
}

Variant power(const Variant& a, const Variant& b) {
    if (anyNull(a, b)) return {};
    const double base = numberOf(a), exponent = numberOf(b);
    const bool noReal = base < 0 && std::trunc(exponent) != exponent;
    if (noReal || (base == 0.0 && exponent < 0)) throwError(err::InvalidArgument);
    return checkedDouble(std::pow(base, exponent));
}

Variant negate(const Variant& a) {
    if (a.isNull()) return {};
    if (isWhole(a)) return checkedLong(-qint64(a.toLong()));
    if (a.type() == Type::Currency) return subtract(Variant::currency(0), a);
    return -numberOf(a);
}

} // namespace jet
