#include "jet/Parser.h"

#include "jet/ActionParser.h"
#include "jet/ExpressionParser.h"
#include "jet/SelectParser.h"

namespace jet {

namespace {

constexpr mkl::Long noStatement = 3129;
constexpr mkl::Long parametersClause = 3139;
constexpr mkl::Long textAfterEnd = 3142;
constexpr mkl::Long expressionSyntax = 3075;

Statement parseBody(TokenStream& tokens) {
    switch (tokens.peek().keyword) {
    case Keyword::Select: return SelectParser(tokens).parse();
    case Keyword::Insert: return ActionParser(tokens).parseInsert();
    case Keyword::Update: return ActionParser(tokens).parseUpdate();
    case Keyword::Delete: return ActionParser(tokens).parseDelete();
    case Keyword::Parameters: tokens.fail(parametersClause);
    default: tokens.fail(noStatement);
    }
}

} // namespace

Statement parseStatement(TokenStream& tokens) {
    Statement statement = parseBody(tokens);
    tokens.accept(u';');
    if (!tokens.atEnd()) tokens.fail(textAfterEnd);
    return statement;
}

ExpressionPtr parseCriterion(TokenStream& tokens) {
    ExpressionPtr expression = ExpressionParser(tokens).parse();
    if (!tokens.atEnd()) tokens.fail(expressionSyntax);
    return expression;
}

} // namespace jet
