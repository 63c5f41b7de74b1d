// Functions on numbers. A text counts as the number that it means, else error 13.
#include "base/RunTimeError.h"
#include "jet/functions/FunctionBodies.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace jet::body {

using mkl::Long;
using mkl::throwError;
using Type = Variant::Type;
namespace err = mkl::err;

namespace {

Variant checked(double value) {
    if (!std::isfinite(value)) throwError(err::Overflow);
    return value;
}

// Applies a rounding; a number stays of its type, a Long as it is.
template<class Rounding>
Variant rounded(const Variant& value, Rounding rounding) {
    switch (value.type()) {
    case Type::Boolean:
    case Type::Int: return value.toLong();
    case Type::Currency: return Variant::currency(Variant(rounding(value.toDouble())).toCurrency());
    case Type::Date: return Variant::date(rounding(value.toDouble()));
    default: return rounding(value.toDouble());
    }
}

// The generator of 24 bits that the dialect has always had; every thread starts with the same number.
class RandomSequence {
public:
    double current() const { return state_ / 16777216.0; }
    double next() {
        state_ = (state_ * 1140671485U + 12820163U) & mask;
        return current();
    }
    void start(float number) {
        const auto bits = std::bit_cast<quint32>(number);
        state_ = ((bits & mask) + (bits >> 24)) & mask;
    }

private:
    static constexpr quint32 mask = 0xFFFFFF;
    quint32 state_ = 0x50000;
};

} // namespace

Variant abs(Arguments arguments) {
    const Variant& value = arguments[0];
    switch (value.type()) {
    case Type::Boolean:
    case Type::Int: return Variant(std::fabs(value.toDouble())).toLong();
    case Type::Currency:
        if (value.toCurrency() == std::numeric_limits<qint64>::min()) throwError(err::Overflow);
        return Variant::currency(std::abs(value.toCurrency()));
    case Type::Date: return Variant::date(std::fabs(value.toDouble()));
    default: return std::fabs(value.toDouble());
    }
}

Variant atn(Arguments arguments) {
    return std::atan(arguments[0].toDouble());
}

Variant cos(Arguments arguments) {
    return std::cos(arguments[0].toDouble());
}

Variant exp(Arguments arguments) {
    return checked(std::exp(arguments[0].toDouble()));
}

Variant fix(Arguments arguments) {
    return rounded(arguments[0], [](double value) { return std::trunc(value); });
}

// Negative numbers show the bits of a Long.
Variant hex(Arguments arguments) {
    return QString::number(static_cast<quint32>(arguments[0].toLong()), 16).toUpper();
}

Variant integer(Arguments arguments) {
    return rounded(arguments[0], [](double value) { return std::floor(value); });
}

Variant log(Arguments arguments) {
    const double value = arguments[0].toDouble();
    if (value <= 0.0) throwError(err::InvalidArgument);
    return std::log(value);
}

Variant oct(Arguments arguments) {
    return QString::number(static_cast<quint32>(arguments[0].toLong()), 8);
}

// Partition(number, start, stop, interval): the range that holds the number, as "start:stop", both ends as wide as the
// widest so that the ranges sort as texts. An end that is open stays blank.
Variant partition(Arguments arguments) {
    const qint64 number = arguments[0].toLong(), start = arguments[1].toLong(), stop = arguments[2].toLong();
    const qint64 interval = arguments[3].toLong();
    if (start < 0 || stop <= start || interval < 1) throwError(err::InvalidArgument);
    QString from, to;
    if (number < start) {
        to = QString::number(start - 1);
    } else if (number > stop) {
        from = QString::number(stop + 1);
    } else {
        const qint64 first = start + (number - start) / interval * interval;
        from = QString::number(first);
        to = QString::number(std::min(first + interval - 1, stop));
    }
    const qsizetype width = std::max(QString::number(start - 1).size(), QString::number(stop + 1).size());
    return from.rightJustified(width) + u':' + to.rightJustified(width);
}

// A negative argument starts a sequence of its own, 0 repeats the last number.
Variant rnd(Arguments arguments) {
    thread_local RandomSequence sequence;
    const double choice = arguments.empty() ? 1.0 : arguments[0].toDouble();
    if (choice == 0.0) return sequence.current();
    if (choice < 0.0) sequence.start(static_cast<float>(choice));
    return sequence.next();
}

Variant round(Arguments arguments) {
    const Long digits = longOr(arguments, 1, 0);
    if (digits < 0 || digits > 22) throwError(err::InvalidArgument);
    const double scale = std::pow(10.0, digits);
    return rounded(arguments[0], [scale](double value) {
        const double scaled = value * scale;
        constexpr double firstWithoutFraction = 4503599627370496.0;
        return std::fabs(scaled) < firstWithoutFraction ? std::nearbyint(scaled) / scale : value;
    });
}

Variant sgn(Arguments arguments) {
    const double value = arguments[0].toDouble();
    return Long(value < 0 ? -1 : value > 0);
}

Variant sin(Arguments arguments) {
    return std::sin(arguments[0].toDouble());
}

Variant sqr(Arguments arguments) {
    const double value = arguments[0].toDouble();
    if (value < 0.0) throwError(err::InvalidArgument);
    return std::sqrt(value);
}

Variant tan(Arguments arguments) {
    return std::tan(arguments[0].toDouble());
}

} // namespace jet::body
