#pragma once
#include "jet/syntax/Syntax.h"
#include "jet/syntax/TokenStream.h"

#include <functional>

namespace jet {

/// Reads one expression from the stream: operators by their power, from Imp (lowest) to ^ (highest).
class ExpressionParser {
public:
    /// Reads the SELECT that begins at the stream's place.
    using QueryParser = std::function<std::shared_ptr<SelectStatement>()>;

    /// Without a parser for queries a subquery is a syntax error.
    explicit ExpressionParser(TokenStream& tokens, QueryParser parseQuery = {})
        : tokens_(tokens)
        , parseQuery_(std::move(parseQuery)) {}

    /// The longest expression that begins here. 3075 if there is none.
    ExpressionPtr parse() { return parse(0); }
    /// Expressions with commas between them, at least one.
    ExpressionList parseList();
    /// T.F, [T].[F], T!F or F.
    ExpressionPtr parseName();

private:
    ExpressionPtr parse(int power);
    ExpressionPtr parseOperand();
    ExpressionPtr parsePrefix();
    ExpressionPtr parseMinus();
    ExpressionPtr parseParenthesis();
    ExpressionPtr parseLiteral(bool negated, const Token& first);
    ExpressionPtr parseCall();
    ExpressionPtr parseConstant(mkl::Variant value);
    ExpressionPtr parseInfix(ExpressionPtr left, const Token& first);
    ExpressionPtr parseIs(ExpressionPtr left, const Token& first);
    ExpressionPtr parseIn(ExpressionPtr left, const Token& first);
    ExpressionPtr parseBetween(ExpressionPtr left, const Token& first);
    ExpressionPtr parseJunction(ExpressionPtr left, const Token& first, int power);
    ExpressionPtr parseBinary(ExpressionPtr left, const Token& first);
    ExpressionPtr parseExists();
    ExpressionPtr parseSubquery(Subquery subquery, const Token& first);
    ExpressionPtr make(Expression::Node node, const Token& first) const;

    int infixPower() const;

    TokenStream& tokens_;
    QueryParser parseQuery_;
};

} // namespace jet
