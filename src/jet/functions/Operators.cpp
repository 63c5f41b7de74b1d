#include "jet/functions/Operators.h"

#include "jet/functions/Calendar.h"
#include "jet/functions/Collation.h"
#include "jet/functions/Like.h"
#include "jet/functions/Operands.h"
#include "jet/functions/Packed.h"
#include "jet/model/Schema.h"

namespace jet {

using Type = Variant::Type;

namespace {

template<class T>
int threeWay(T a, T b) {
    return a < b ? -1 : a > b;
}

double dateOrNumber(const Variant& value) {
    if (value.isText())
        if (const auto date = dateFromText(value.toText())) return *date;
    return numberOf(value);
}

template<class Holds>
Variant comparison(const Variant& a, const Variant& b, Holds holds) {
    if (anyNull(a, b)) return {};
    return Variant(bool(holds(compareValues(a, b))));
}

template<ColumnType type>
Variant converted(std::span<const Variant> operands) {
    return convertedTo(operands[0], type);
}

template<Variant (*implementation)(const Variant&)>
Variant unary(std::span<const Variant> operands) {
    return implementation(operands[0]);
}

template<Variant (*implementation)(const Variant&, const Variant&)>
Variant binary(std::span<const Variant> operands) {
    return implementation(operands[0], operands[1]);
}

template<Variant (*implementation)(const Variant&, const Variant&, const Variant&)>
Variant ternary(std::span<const Variant> operands) {
    return implementation(operands[0], operands[1], operands[2]);
}

constexpr Operator table[] = {
    {"mkl_add", 2, binary<add>},
    {"mkl_and", 2, binary<logicalAnd>},
    {"mkl_between", 3, ternary<between>},
    {"mkl_concat", 2, binary<concat>},
    {"mkl_divide", 2, binary<divide>},
    {"mkl_equal", 2, binary<equal>},
    {"mkl_eqv", 2, binary<logicalEqv>},
    {"mkl_greater", 2, binary<greater>},
    {"mkl_greater_equal", 2, binary<greaterOrEqual>},
    {"mkl_imp", 2, binary<logicalImp>},
    {"mkl_int_divide", 2, binary<intDivide>},
    {"mkl_less", 2, binary<less>},
    {"mkl_less_equal", 2, binary<lessOrEqual>},
    {"mkl_like", 2, binary<like>},
    {"mkl_modulo", 2, binary<modulo>},
    {"mkl_multiply", 2, binary<multiply>},
    {"mkl_negate", 1, unary<negate>},
    {"mkl_not", 1, unary<logicalNot>},
    {"mkl_not_equal", 2, binary<notEqual>},
    {"mkl_or", 2, binary<logicalOr>},
    {"mkl_pack", 1, unary<packed>},
    {"mkl_power", 2, binary<power>},
    {"mkl_subtract", 2, binary<subtract>},
    {"mkl_to_boolean", 1, converted<ColumnType::Boolean>},
    {"mkl_to_currency", 1, converted<ColumnType::Currency>},
    {"mkl_to_date", 1, converted<ColumnType::Date>},
    {"mkl_to_double", 1, converted<ColumnType::Double>},
    {"mkl_to_long", 1, converted<ColumnType::Int>},
    {"mkl_to_text", 1, converted<ColumnType::Text>},
    {"mkl_truth", 1, unary<truth>},
    {"mkl_unpack", 1, unary<unpacked>},
    {"mkl_xor", 2, binary<logicalXor>},
};

} // namespace

std::span<const Operator> operators() {
    return table;
}

Truth truthOf(const Variant& value) {
    if (value.isNull()) return {};
    return numberOf(value) != 0.0;
}

Variant fromTruth(Truth truth) {
    return truth ? Variant(*truth) : Variant();
}

Truth either(Truth a, Truth b) {
    if (a.value_or(false) || b.value_or(false)) return true;
    return a && b ? Truth(false) : std::nullopt;
}

Truth inverse(Truth a) {
    return a ? Truth(!*a) : std::nullopt;
}

Variant convertedTo(const Variant& value, ColumnType type) {
    if (value.isNull()) return {};
    switch (type) {
    case ColumnType::Boolean: return value.toBoolean();
    case ColumnType::Int: return value.toLong();
    case ColumnType::Double: return value.toDouble();
    case ColumnType::Currency: return Variant::currency(value.toCurrency());
    case ColumnType::Date: return Variant::date(Variant(dateOrNumber(value)).toDate());
    case ColumnType::Text: return value.toText();
    case ColumnType::Unknown:
    case ColumnType::Binary: break;
    }
    return value;
}

Variant concat(const Variant& a, const Variant& b) {
    if (a.isNull() && b.isNull()) return {};
    if (a.isNull()) return b.toText();
    return b.isNull() ? a.toText() : a.toText() + b.toText();
}

int compareValues(const Variant& a, const Variant& b) {
    if (a.isText() && b.isText()) return compare(a.toText(), b.toText());
    if (a.type() == Type::Binary && b.type() == Type::Binary) return threeWay(a.toText(), b.toText());
    if (a.type() == Type::Currency && b.type() == Type::Currency) return threeWay(a.toCurrency(), b.toCurrency());
    const bool dates = a.type() == Type::Date || b.type() == Type::Date;
    return dates ? threeWay(dateOrNumber(a), dateOrNumber(b)) : threeWay(numberOf(a), numberOf(b));
}

Variant equal(const Variant& a, const Variant& b) {
    return comparison(a, b, [](int order) { return order == 0; });
}

Variant notEqual(const Variant& a, const Variant& b) {
    return comparison(a, b, [](int order) { return order != 0; });
}

Variant less(const Variant& a, const Variant& b) {
    return comparison(a, b, [](int order) { return order < 0; });
}

Variant lessOrEqual(const Variant& a, const Variant& b) {
    return comparison(a, b, [](int order) { return order <= 0; });
}

Variant greater(const Variant& a, const Variant& b) {
    return comparison(a, b, [](int order) { return order > 0; });
}

Variant greaterOrEqual(const Variant& a, const Variant& b) {
    return comparison(a, b, [](int order) { return order >= 0; });
}

Variant between(const Variant& value, const Variant& bound1, const Variant& bound2) {
    if (value.isNull() || anyNull(bound1, bound2)) return {};
    const int to1 = compareValues(value, bound1), to2 = compareValues(value, bound2);
    return Variant((to1 >= 0 && to2 <= 0) || (to1 <= 0 && to2 >= 0));
}

Variant like(const Variant& value, const Variant& pattern) {
    if (anyNull(value, pattern)) return {};
    return Variant(matchesLike(value.toText(), pattern.toText()));
}

Variant truth(const Variant& a) {
    return fromTruth(truthOf(a));
}

Variant logicalNot(const Variant& a) {
    return fromTruth(inverse(truthOf(a)));
}

Variant logicalAnd(const Variant& a, const Variant& b) {
    return fromTruth(inverse(either(inverse(truthOf(a)), inverse(truthOf(b)))));
}

Variant logicalOr(const Variant& a, const Variant& b) {
    return fromTruth(either(truthOf(a), truthOf(b)));
}

Variant logicalXor(const Variant& a, const Variant& b) {
    const Truth left = truthOf(a), right = truthOf(b);
    return left && right ? Variant(*left != *right) : Variant();
}

Variant logicalEqv(const Variant& a, const Variant& b) {
    return logicalNot(logicalXor(a, b));
}

Variant logicalImp(const Variant& a, const Variant& b) {
    return fromTruth(either(inverse(truthOf(a)), truthOf(b)));
}

} // namespace jet
