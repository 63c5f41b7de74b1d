#pragma once
// Calls a function of the dialect by its name, as a statement would.
#include "jet/functions/Functions.h"
#include "support/Printing.h"

#include <vector>

using FunctionArguments = std::vector<mkl::Variant>;

inline mkl::Variant call(QStringView name, const FunctionArguments& arguments) {
    const jet::Function* function = jet::findFunction(name);
    if (!function || !function->takes(static_cast<int>(arguments.size()))) {
        ADD_FAILURE() << "no such function: " << name.toString().toStdString() << " with " << arguments.size();
        return {};
    }
    return function->implementation(arguments);
}

inline mkl::Long errorOfCall(QStringView name, const FunctionArguments& arguments) {
    return mkl::errorOf([&] { call(name, arguments); });
}

struct FunctionResult {
    QStringView name;
    FunctionArguments arguments;
    mkl::Variant result;
};
struct FunctionError {
    QStringView name;
    FunctionArguments arguments;
    mkl::Long number;
};

inline std::string describe(QStringView name, const FunctionArguments& arguments) {
    std::string text = name.toString().toStdString();
    for (const mkl::Variant& argument : arguments)
        text += ' ' + testing::PrintToString(argument);
    return text;
}

inline void checkResults(const std::vector<FunctionResult>& rows) {
    for (const auto& [name, arguments, result] : rows)
        EXPECT_EQ(call(name, arguments), result) << describe(name, arguments);
}

inline void checkErrors(const std::vector<FunctionError>& rows) {
    for (const auto& [name, arguments, number] : rows)
        EXPECT_EQ(errorOfCall(name, arguments), number) << describe(name, arguments);
}

/// Short forms for tables of values.
namespace values {
inline mkl::Variant t(const char16_t* text) {
    return QString::fromUtf16(text);
}
inline mkl::Variant n(mkl::Long number) {
    return number;
}
inline const mkl::Variant null;
} // namespace values
