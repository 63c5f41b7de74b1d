#include "jet/binding/Typing.h"

#include "jet/functions/Operands.h"
#include "jet/model/Raise.h"

namespace jet {

namespace {

enum class Family : quint8 { Unknown, Number, Date, Text, Binary };

Family familyOf(ColumnType type) {
    switch (type) {
    case ColumnType::Boolean:
    case ColumnType::Int:
    case ColumnType::Double:
    case ColumnType::Currency: return Family::Number;
    case ColumnType::Date: return Family::Date;
    case ColumnType::Text: return Family::Text;
    case ColumnType::Binary: return Family::Binary;
    case ColumnType::Unknown: break;
    }
    return Family::Unknown;
}

bool isWhole(ColumnType type) {
    return type == ColumnType::Boolean || type == ColumnType::Int;
}

// Whole numbers give whole numbers, with amounts they give amounts, all else is floating.
ColumnType numberType(ColumnType left, ColumnType right) {
    if (left == ColumnType::Unknown || right == ColumnType::Unknown) return ColumnType::Unknown;
    if (isWhole(left) && isWhole(right)) return ColumnType::Int;
    const bool leftExact = isWhole(left) || left == ColumnType::Currency;
    const bool rightExact = isWhole(right) || right == ColumnType::Currency;
    return leftExact && rightExact ? ColumnType::Currency : ColumnType::Double;
}

ColumnType sumType(ColumnType left, ColumnType right) {
    if (left == ColumnType::Unknown || right == ColumnType::Unknown) return ColumnType::Unknown;
    if (left == ColumnType::Text && right == ColumnType::Text) return ColumnType::Text;
    if (left == ColumnType::Date || right == ColumnType::Date) return ColumnType::Date;
    return numberType(left, right);
}

ColumnType differenceType(ColumnType left, ColumnType right) {
    if (left == ColumnType::Unknown || right == ColumnType::Unknown) return ColumnType::Unknown;
    if (left == ColumnType::Date && right != ColumnType::Date) return ColumnType::Date;
    return numberType(left, right);
}

} // namespace

ColumnType typeOf(const mkl::Variant& value) {
    switch (value.type()) {
    case mkl::Variant::Type::Null: return ColumnType::Unknown;
    case mkl::Variant::Type::Boolean: return ColumnType::Boolean;
    case mkl::Variant::Type::Int: return ColumnType::Int;
    case mkl::Variant::Type::Double: return ColumnType::Double;
    case mkl::Variant::Type::Currency: return ColumnType::Currency;
    case mkl::Variant::Type::Date: return ColumnType::Date;
    case mkl::Variant::Type::Text: return ColumnType::Text;
    case mkl::Variant::Type::Binary: return ColumnType::Binary;
    }
    return ColumnType::Unknown;
}

ColumnType negationType(ColumnType operand) {
    return numberType(operand, operand);
}

ColumnType binaryType(Op op, ColumnType left, ColumnType right) {
    switch (op) {
    case Op::Concatenate: return ColumnType::Text;
    case Op::Divide:
    case Op::Power: return ColumnType::Double;
    case Op::IntegerDivide:
    case Op::Modulo: return ColumnType::Int;
    case Op::Add: return sumType(left, right);
    case Op::Subtract: return differenceType(left, right);
    case Op::Multiply: return numberType(left, right);
    default: return ColumnType::Boolean;
    }
}

ColumnType unionType(ColumnType left, ColumnType right) {
    if (left == right) return left;
    const Family a = familyOf(left), b = familyOf(right);
    const bool open = a == Family::Unknown || b == Family::Unknown || a == Family::Binary || b == Family::Binary;
    if (open) return ColumnType::Unknown;
    return a == Family::Number && b == Family::Number ? numberType(left, right) : ColumnType::Text;
}

const Expression& withoutAlias(const Expression& expression) {
    const Expression* current = &expression;
    while (current->as<Name>() && current->as<Name>()->alias)
        current = current->as<Name>()->alias;
    return *current;
}

bool isPlain(const Expression& expression) {
    const Expression& target = withoutAlias(expression);
    return target.as<Literal>() || target.as<Constant>() || target.as<Name>();
}

Comparison comparisonOf(const Expression& left, const Expression& right) {
    if (left.isNull() || right.isNull()) return Comparison::Native;
    const Family a = familyOf(left.type), b = familyOf(right.type);
    if (a == Family::Unknown || b == Family::Unknown) return Comparison::Function;
    if (a == b) return a == Family::Text ? Comparison::Collated : Comparison::Native;
    const bool datesWithNumbers = a != Family::Text && b != Family::Text && a != Family::Binary && b != Family::Binary;
    if (!datesWithNumbers && isPlain(left) && isPlain(right)) raiseAt(errCriterionType, spanOf(left.text, right.text));
    return Comparison::Function;
}

} // namespace jet
