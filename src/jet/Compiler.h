#pragma once
// The whole road of a statement: text, tree, bound tree, native text.
#include "jet/model/Plan.h"
#include "jet/model/Schema.h"

#include <QStringView>

namespace jet {

class Target;

/// Translates a statement of the dialect. Raises mkl::RunTimeError with the dialect's numbers
/// (3061, 3075, 3078, …); what is not understood is an error, never passed through.
Plan compileStatement(QStringView text, const Schema& schema, const Target& target);

/// Translates a SELECT for a dynaset. Errors as above; 3219 for a statement that is no SELECT.
DynasetPlan compileDynaset(QStringView text, const Schema& schema, const Target& target);

/// Reads a criterion alone, up to the end of the text, without binding its names. Raises 3075 for a
/// text that is no expression (a second statement, a stray parenthesis, a placeholder left in), 3126 for a bad bracket,
/// 3360 for one nested too deeply.
void checkCriterion(QStringView text);

} // namespace jet
