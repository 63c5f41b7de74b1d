#include "jet/syntax/ExpressionParser.h"

#include "jet/syntax/Lexer.h"

namespace jet {

namespace {

constexpr mkl::Long syntaxError = 3075;

enum Power : int {
    NoPower,
    ImpliesPower,
    EquivalentPower,
    XorPower,
    OrPower,
    AndPower,
    NotPower,
    ComparisonPower,
    ConcatenatePower,
    SumPower,
    ModuloPower,
    IntegerDividePower,
    ProductPower,
    SignPower,
    PowerPower
};

struct BinaryOperator {
    Op op;
    Power power;
};

std::optional<BinaryOperator> symbolOperator(char16_t symbol) {
    switch (symbol) {
    case u'^': return {{Op::Power, PowerPower}};
    case u'*': return {{Op::Multiply, ProductPower}};
    case u'/': return {{Op::Divide, ProductPower}};
    case u'\\': return {{Op::IntegerDivide, IntegerDividePower}};
    case u'+': return {{Op::Add, SumPower}};
    case u'-': return {{Op::Subtract, SumPower}};
    case u'&': return {{Op::Concatenate, ConcatenatePower}};
    case u'=': return {{Op::Equal, ComparisonPower}};
    case u'<': return {{Op::Less, ComparisonPower}};
    case u'>': return {{Op::Greater, ComparisonPower}};
    case lessOrEqualSign: return {{Op::LessOrEqual, ComparisonPower}};
    case greaterOrEqualSign: return {{Op::GreaterOrEqual, ComparisonPower}};
    case notEqualSign: return {{Op::NotEqual, ComparisonPower}};
    default: return {};
    }
}

std::optional<BinaryOperator> binaryOperator(const Token& token) {
    switch (token.keyword) {
    case Keyword::Mod: return {{Op::Modulo, ModuloPower}};
    case Keyword::Like: return {{Op::Like, ComparisonPower}};
    case Keyword::Xor: return {{Op::Xor, XorPower}};
    case Keyword::Eqv: return {{Op::Equivalent, EquivalentPower}};
    case Keyword::Imp: return {{Op::Implies, ImpliesPower}};
    default: return token.kind == TokenKind::Symbol ? symbolOperator(token.symbol) : std::nullopt;
    }
}

} // namespace

ExpressionPtr ExpressionParser::make(Expression::Node node, const Token& first) const {
    auto expression = std::make_unique<Expression>();
    expression->node = std::move(node);
    expression->text = tokens_.textSince(first);
    for (const Expression* operand : operandsOf(*expression))
        expression->depth = qMax(expression->depth, operand->depth + 1);
    if (expression->depth > maximalDepth) raiseAt(3360, expression->text);
    return expression;
}

ExpressionList ExpressionParser::parseList() {
    ExpressionList list;
    do {
        list.push_back(parse());
    } while (tokens_.accept(u','));
    return list;
}

// The power of the operator that stands next, NoPower if none does.
int ExpressionParser::infixPower() const {
    const Token& token = tokens_.peek();
    switch (token.keyword) {
    case Keyword::Or: return OrPower;
    case Keyword::And: return AndPower;
    case Keyword::Is:
    case Keyword::In:
    case Keyword::Between: return ComparisonPower;
    case Keyword::Not: {
        const Keyword next = tokens_.peek(1).keyword;
        const bool fits = next == Keyword::Like || next == Keyword::In || next == Keyword::Between;
        return fits ? ComparisonPower : NoPower;
    }
    default: break;
    }
    const auto binary = binaryOperator(token);
    return binary ? binary->power : NoPower;
}

ExpressionPtr ExpressionParser::parse(int power) {
    const TokenStream::Level level(tokens_);
    const Token& first = tokens_.peek();
    ExpressionPtr left = parsePrefix();
    while (infixPower() > power)
        left = parseInfix(std::move(left), first);
    return left;
}

ExpressionPtr ExpressionParser::parsePrefix() {
    const Token& first = tokens_.peek();
    if (first.is(u'-')) return parseMinus();
    if (tokens_.accept(u'+')) return parse(SignPower);
    if (tokens_.accept(Keyword::Not)) {
        ExpressionPtr operand = parse(NotPower);
        return make(Not{std::move(operand)}, first);
    }
    return parseOperand();
}

// A minus in front of a digit belongs to the literal, so that -2^2 is 4.
ExpressionPtr ExpressionParser::parseMinus() {
    const Token first = tokens_.take();
    if (tokens_.peek().isNumber()) return parseLiteral(true, first);
    ExpressionPtr operand = parse(SignPower);
    return make(Negation{std::move(operand)}, first);
}

ExpressionPtr ExpressionParser::parseOperand() {
    const Token& token = tokens_.peek();
    if (token.isLiteral()) return parseLiteral(false, token);
    if (tokens_.atSubquery()) return parseSubquery({}, token);
    if (token.is(u'(')) return parseParenthesis();
    if (token.is(Keyword::Exists) && tokens_.atSubquery(1)) return parseExists();
    const Token& next = tokens_.peek(1);
    const bool isQualifier = token.kind == TokenKind::Word && (next.is(u'.') || next.is(u'!'));
    if (!isQualifier) {
        switch (token.keyword) {
        case Keyword::True:
        case Keyword::Yes:
        case Keyword::On: return parseConstant(true);
        case Keyword::False:
        case Keyword::No:
        case Keyword::Off: return parseConstant(false);
        case Keyword::Null: return parseConstant({});
        default: break;
        }
    }
    if (token.kind == TokenKind::Word && !isStrict(token.keyword) && next.is(u'(')) return parseCall();
    return parseName();
}

ExpressionPtr ExpressionParser::parseConstant(mkl::Variant value) {
    const Token first = tokens_.take();
    return make(Constant{std::move(value)}, first);
}

ExpressionPtr ExpressionParser::parseLiteral(bool negated, const Token& first) {
    const Token token = tokens_.take();
    return make(Literal{token.literal, literalValue(token), negated}, first);
}

ExpressionPtr ExpressionParser::parseParenthesis() {
    tokens_.take();
    ExpressionPtr inner = parse();
    tokens_.expect(u')', syntaxError);
    return inner;
}

ExpressionPtr ExpressionParser::parseName() {
    const Token& first = tokens_.peek();
    const Token& next = tokens_.peek(1);
    const bool qualified = next.is(u'.') || next.is(u'!');
    const bool isName = first.kind == TokenKind::Word || first.kind == TokenKind::Bracketed;
    const bool isClause = (first.is(Keyword::Order) || first.is(Keyword::Group)) && next.is(Keyword::By);
    if (!isName || isClause || (!qualified && !tokens_.atName())) tokens_.fail(syntaxError);
    Name name;
    name.name = nameOf(tokens_.take());
    if (qualified) {
        tokens_.take();
        const TokenKind kind = tokens_.peek().kind;
        if (kind != TokenKind::Word && kind != TokenKind::Bracketed) tokens_.fail(syntaxError);
        name.qualifier = std::exchange(name.name, nameOf(tokens_.take()));
    }
    return make(name, first);
}

ExpressionPtr ExpressionParser::parseCall() {
    const Token first = tokens_.take();
    tokens_.take();
    Call call;
    call.name = first.text;
    if (tokens_.at(u'*') && tokens_.peek(1).is(u')')) {
        tokens_.take();
        call.star = true;
    } else if (!tokens_.at(u')')) {
        call.arguments = parseList();
    }
    tokens_.expect(u')', syntaxError);
    return make(std::move(call), first);
}

ExpressionPtr ExpressionParser::parseInfix(ExpressionPtr left, const Token& first) {
    switch (tokens_.peek().keyword) {
    case Keyword::Or: return parseJunction(std::move(left), first, OrPower);
    case Keyword::And: return parseJunction(std::move(left), first, AndPower);
    case Keyword::Is: return parseIs(std::move(left), first);
    case Keyword::In: return parseIn(std::move(left), first);
    case Keyword::Between: return parseBetween(std::move(left), first);
    case Keyword::Not: {
        tokens_.take();
        ExpressionPtr positive = parseInfix(std::move(left), first);
        return make(Not{std::move(positive)}, first);
    }
    default: return parseBinary(std::move(left), first);
    }
}

ExpressionPtr ExpressionParser::parseBinary(ExpressionPtr left, const Token& first) {
    const BinaryOperator binary = *binaryOperator(tokens_.take());
    const bool any = tokens_.at(Keyword::Any) || tokens_.at(Keyword::Some);
    if (isComparison(binary.op) && (any || tokens_.at(Keyword::All)) && tokens_.atSubquery(1)) {
        tokens_.take();
        Subquery subquery{any ? Subquery::Kind::Any : Subquery::Kind::All, binary.op, std::move(left)};
        return parseSubquery(std::move(subquery), first);
    }
    ExpressionPtr right = parse(binary.power);
    return make(Binary{binary.op, std::move(left), std::move(right)}, first);
}

// One node for a whole chain: a host's filter may hold hundreds of terms.
ExpressionPtr ExpressionParser::parseJunction(ExpressionPtr left, const Token& first, int power) {
    const Keyword keyword = power == AndPower ? Keyword::And : Keyword::Or;
    Junction junction{power == AndPower, {}};
    junction.operands.push_back(std::move(left));
    while (tokens_.accept(keyword))
        junction.operands.push_back(parse(power));
    return make(std::move(junction), first);
}

ExpressionPtr ExpressionParser::parseIs(ExpressionPtr left, const Token& first) {
    tokens_.take();
    const bool negated = tokens_.accept(Keyword::Not);
    tokens_.expect(Keyword::Null, syntaxError);
    return make(IsNull{std::move(left), negated}, first);
}

ExpressionPtr ExpressionParser::parseIn(ExpressionPtr left, const Token& first) {
    tokens_.take();
    if (tokens_.atSubquery()) return parseSubquery({Subquery::Kind::In, Op::Equal, std::move(left)}, first);
    tokens_.expect(u'(', syntaxError);
    ExpressionList items = parseList();
    tokens_.expect(u')', syntaxError);
    return make(In{std::move(left), std::move(items)}, first);
}

ExpressionPtr ExpressionParser::parseExists() {
    const Token first = tokens_.take();
    return parseSubquery({Subquery::Kind::Exists}, first);
}

ExpressionPtr ExpressionParser::parseSubquery(Subquery subquery, const Token& first) {
    const TokenStream::Level level(tokens_);
    if (!parseQuery_) tokens_.fail(syntaxError);
    tokens_.take();
    subquery.select = parseQuery_();
    tokens_.expect(u')', syntaxError);
    return make(std::move(subquery), first);
}

ExpressionPtr ExpressionParser::parseBetween(ExpressionPtr left, const Token& first) {
    tokens_.take();
    ExpressionPtr low = parse(ComparisonPower);
    tokens_.expect(Keyword::And, syntaxError);
    ExpressionPtr high = parse(ComparisonPower);
    return make(Between{std::move(left), std::move(low), std::move(high)}, first);
}

} // namespace jet
