#include "jet/writing/NativeOperators.h"

namespace jet {

const char* functionOf(Op op) {
    switch (op) {
    case Op::Power: return "mkl_power";
    case Op::Multiply: return "mkl_multiply";
    case Op::Divide: return "mkl_divide";
    case Op::IntegerDivide: return "mkl_int_divide";
    case Op::Modulo: return "mkl_modulo";
    case Op::Add: return "mkl_add";
    case Op::Subtract: return "mkl_subtract";
    case Op::Concatenate: return "mkl_concat";
    case Op::Equal: return "mkl_equal";
    case Op::NotEqual: return "mkl_not_equal";
    case Op::Less: return "mkl_less";
    case Op::LessOrEqual: return "mkl_less_equal";
    case Op::Greater: return "mkl_greater";
    case Op::GreaterOrEqual: return "mkl_greater_equal";
    case Op::Like: return "mkl_like";
    case Op::Xor: return "mkl_xor";
    case Op::Equivalent: return "mkl_eqv";
    case Op::Implies: return "mkl_imp";
    }
    return "";
}

const char* nativeComparison(Op op) {
    switch (op) {
    case Op::Equal: return " = ";
    case Op::NotEqual: return " <> ";
    case Op::Less: return " < ";
    case Op::LessOrEqual: return " <= ";
    case Op::Greater: return " > ";
    default: return " >= ";
    }
}

} // namespace jet
