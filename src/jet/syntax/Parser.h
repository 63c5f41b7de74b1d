#pragma once
#include "jet/syntax/Syntax.h"
#include "jet/syntax/TokenStream.h"

namespace jet {

/// Reads one whole statement, with its final ";" if there is one. 3142 for what follows it.
Statement parseStatement(TokenStream& tokens);

/// Reads one expression up to the end of the text. 3075 for what is none.
ExpressionPtr parseCriterion(TokenStream& tokens);

} // namespace jet
