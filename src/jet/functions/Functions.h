#pragma once
// The functions of the dialect: one table. The binder takes names and types from it, the engines
// register it, the evaluator calls it; so a function means the same wherever it is computed.
#include "base/Variant.h"
#include "jet/model/Schema.h"

#include <QStringView>
#include <limits>
#include <span>

namespace jet {

using Arguments = std::span<const mkl::Variant>;
/// Computes a value; raises mkl::RunTimeError (5, 6, 13, 94, …). The caller has checked the number of arguments.
using Implementation = mkl::Variant (*)(Arguments);

struct Function {
    QStringView name;       ///< as the dialect spells it
    const char* nativeName; ///< as the engines know it
    int minArguments;
    int maxArguments;                                                ///< anyNumber where there is no limit
    ColumnType (*resultType)(std::span<const ColumnType> arguments); ///< Unknown where only the value or a branch tells
    bool deterministic; ///< false: depends on the clock or on earlier calls
    bool lazy;          ///< computes the chosen argument only, so it has no implementation: IIf, Choose, Switch
    Implementation implementation; ///< nullptr of a lazy function

    static constexpr int anyNumber = std::numeric_limits<int>::max();
    bool takes(int argumentCount) const { return argumentCount >= minArguments && argumentCount <= maxArguments; }
};

/// All functions, sorted by name without regard to case.
std::span<const Function> functions();
/// Finds a function without regard to case; nullptr for a name that the dialect does not know.
const Function* findFunction(QStringView name);

} // namespace jet
