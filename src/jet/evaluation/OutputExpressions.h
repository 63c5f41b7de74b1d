#pragma once
// What Find, Filter and Sort have in common: texts whose names are the columns of a result.
#include "jet/evaluation/Evaluator.h"
#include "jet/model/Plan.h"

#include <QList>
#include <functional>
#include <span>

namespace jet {

/// Binds an expression to output columns. 3070, 3079, 3085, 3464, and the given number for an aggregate.
void bindToOutputs(Expression& expression, std::span<const OutputColumn> columns, mkl::Long aggregateError);

/// Adds the output columns that the bound expression reads; the list stays ascending.
void addColumnsOf(const Expression& expression, QList<int>& columns);

/// Reads a text; what is a syntax error in an expression (3075, 3126) is raised under that number.
void readWithSyntaxError(mkl::Long number, QStringView text, const std::function<void()>& read);

} // namespace jet
