#pragma once
// Bound expressions over rows in memory: the same functions, operators and rules that the engines use.
#include "jet/functions/Operators.h"
#include "jet/model/RowValues.h"
#include "jet/syntax/Syntax.h"

namespace jet {

/// An expression made ready for many rows. It owns what it needs; several threads may share it.
///
/// As a condition it is asked whether it is true, or false: And and Or then compute their operands from left to right
/// and none after the one that decides, as engines do. Asked for its value it computes all of them.
class Evaluator {
public:
    virtual ~Evaluator() = default;

    /// Raises what its operators and functions raise.
    virtual Variant value(const RowValues& row) const = 0;
    virtual Truth truth(const RowValues& row) const { return truthOf(value(row)); }
    virtual bool isTrue(const RowValues& row) const { return truth(row) == Truth(true); }
    virtual bool isFalse(const RowValues& row) const { return truth(row) == Truth(false); }

    /// The value where it is the same for all rows and was computed already.
    virtual const Variant* constant() const { return nullptr; }
    /// The number of the column of texts that it is, or -1.
    virtual int textColumn() const { return -1; }
};

using EvaluatorPtr = std::unique_ptr<const Evaluator>;

/// What can be known of an expression before any row is read.
struct Prepared {
    EvaluatorPtr evaluator;
    bool isConstant = false; ///< the same for all rows
};

/// Prepares a bound expression whose names are output columns. Patterns with a broken class match nothing. What is
/// constant is computed here, once; an error that it raises waits until the value is asked for.
Prepared prepare(const Expression& expression);

/// A value as it comes back from an engine that stores it: dates in whole seconds, texts without halves of
/// characters. 3349 for an amount that cannot be stored exactly.
Variant asStored(Variant value);

} // namespace jet
