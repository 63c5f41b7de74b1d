#include "jet/syntax/Parser.h"

#include "jet/syntax/ActionParser.h"
#include "jet/syntax/ExpressionParser.h"
#include "jet/syntax/SelectParser.h"

namespace jet {

namespace {

constexpr mkl::Long noStatement = 3129;
constexpr mkl::Long textAfterEnd = 3142;
constexpr mkl::Long expressionSyntax = 3075;

Statement parseSelect(TokenStream& tokens) {
    SelectStatement select = SelectParser(tokens).parseWithInto();
    if (select.into.isEmpty()) return select;
    const QStringView table = select.into;
    return MakeTableStatement{table, std::move(select)};
}

Statement parseBody(TokenStream& tokens) {
    switch (tokens.peek().keyword) {
    case Keyword::Select: return parseSelect(tokens);
    case Keyword::Insert: return ActionParser(tokens).parseInsert();
    case Keyword::Update: return ActionParser(tokens).parseUpdate();
    case Keyword::Delete: return ActionParser(tokens).parseDelete();
    default: tokens.fail(noStatement);
    }
}

} // namespace

Statement parseStatement(TokenStream& tokens) {
    if (tokens.at(Keyword::Parameters)) ActionParser(tokens).parseParameters();
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
