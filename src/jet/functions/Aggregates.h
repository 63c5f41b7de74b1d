#pragma once
// The aggregates of the dialect. Those that no engine has under the same meaning are computed here, row by row.
#include "jet/functions/Functions.h"

#include <memory>

namespace jet {

/// Takes in the rows of one group.
class Accumulator {
public:
    virtual ~Accumulator() = default;
    /// The arguments of the native call, of one row.
    virtual void add(Arguments arguments) = 0;
    virtual mkl::Variant result() const = 0;
};

struct Aggregate {
    QStringView name;       ///< as the dialect spells it; empty if it cannot
    const char* nativeName; ///< as the engines know it
    ColumnType (*resultType)(ColumnType argument);
    std::unique_ptr<Accumulator> (*create)(); ///< nullptr: the engine's own aggregate serves
    bool numeric;                             ///< takes numbers only
    bool ordered;                             ///< the native call has the keys of the row behind the value: First, Last
};

std::span<const Aggregate> aggregates();
/// Finds an aggregate without regard to case, or nullptr.
const Aggregate* findAggregate(QStringView name);

} // namespace jet
