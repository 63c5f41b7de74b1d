#include "jet/syntax/SelectParser.h"

#include "jet/syntax/Lexer.h"

namespace jet {

namespace {

constexpr mkl::Long expressionSyntax = 3075;
constexpr mkl::Long fromSyntax = 3131;
constexpr mkl::Long groupBySyntax = 3132;
constexpr mkl::Long havingSyntax = 3133;
constexpr mkl::Long joinSyntax = 3135;
constexpr mkl::Long orderBySyntax = 3138;
constexpr mkl::Long selectSyntax = 3141;
constexpr mkl::Long whereSyntax = 3145;
constexpr mkl::Long badTop = 3308;
constexpr mkl::Long unionSyntax = 3319;

} // namespace

SelectStatement SelectParser::parse() {
    SelectStatement select = parseOne();
    while (tokens_.at(Keyword::Union))
        parseUnion(select);
    if (!atQueryEnd()) tokens_.fail(select.unions.empty() ? selectSyntax : unionSyntax);
    return select;
}

SelectStatement SelectParser::parseOne() {
    tokens_.take();
    SelectStatement select;
    parsePredicates(select);
    parseOutputs(select);
    if (tokens_.accept(Keyword::From)) parseFrom(select);
    select.where = parseWhere();
    parseGroupBy(select);
    if (tokens_.accept(Keyword::Having)) select.having = parseCondition(havingSyntax);
    if (acceptClause(Keyword::Order)) select.orderBy = parseOrderList();
    return select;
}

SelectStatement SelectParser::parseWithInto() {
    mayMakeTable_ = true;
    return parse();
}

// The order of the last SELECT is that of the whole; none before may have one.
void SelectParser::parseUnion(SelectStatement& select) {
    if (!select.orderBy.empty()) tokens_.fail(unionSyntax);
    tokens_.take();
    UnionPart part;
    part.all = tokens_.accept(Keyword::All);
    part.text = tokens_.peek().text;
    if (!tokens_.at(Keyword::Select)) tokens_.fail(unionSyntax);
    mayMakeTable_ = false;
    part.select = parseOne();
    select.orderBy = std::move(part.select.orderBy);
    part.select.orderBy.clear();
    select.unions.push_back(std::move(part));
}

std::shared_ptr<SelectStatement> SelectParser::parseNested() {
    const TokenStream::Level level(tokens_);
    ++nesting_;
    auto select = std::make_shared<SelectStatement>(parse());
    --nesting_;
    return select;
}

bool SelectParser::atQueryEnd() const {
    return tokens_.atEnd() || (nesting_ > 0 ? tokens_.at(u')') : tokens_.at(u';'));
}

bool SelectParser::beginsOperand(qsizetype ahead) const {
    const Token& token = tokens_.peek(ahead);
    return token.isLiteral() || tokens_.atName(ahead) || token.is(u'*') || token.is(u'(');
}

// The predicates are names too where nothing follows that they could stand before: "SELECT Top, All FROM t".
void SelectParser::parsePredicates(SelectStatement& select) {
    if (tokens_.at(Keyword::Distinct) && !tokens_.atName()) {
        tokens_.take();
        select.distinct = true;
    } else if (tokens_.at(Keyword::All) && beginsOperand(1)) {
        tokens_.take();
    } else if (tokens_.at(Keyword::DistinctRow) && beginsOperand(1)) {
        tokens_.take();
        select.distinctRow = true;
    }
    if (atTop()) parseTop(select);
}

// "Top - 1" is a difference unless an output follows it.
bool SelectParser::atTop() const {
    if (!tokens_.at(Keyword::Top)) return false;
    if (tokens_.peek(1).is(u'-')) return tokens_.peek(2).isNumber() && beginsOperand(3) && !tokens_.peek(3).is(u'*');
    return tokens_.peek(1).isLiteral() || tokens_.atName(1);
}

void SelectParser::parseTop(SelectStatement& select) {
    tokens_.take();
    if (tokens_.peek().kind != TokenKind::Integer) tokens_.fail(badTop);
    const Token count = tokens_.take();
    select.top = Top{{count.literal, literalValue(count), false}, false, count.text};
    if (tokens_.at(Keyword::Percent) && (beginsOperand(1) || tokens_.peek(1).is(u'-'))) {
        tokens_.take();
        select.top->percent = true;
    }
}

void SelectParser::parseOutputs(SelectStatement& select) {
    do {
        select.outputs.push_back(parseOutput());
    } while (tokens_.accept(u','));
    if (mayMakeTable_ && nesting_ == 0 && tokens_.accept(Keyword::Into))
        select.into = tokens_.takeName(selectSyntax);
    else if (tokens_.at(Keyword::Into))
        tokens_.fail(selectSyntax);
    if (!atClauseEnd()) tokens_.fail(expressionSyntax);
}

OutputItem SelectParser::parseOutput() {
    OutputItem item;
    const Token& first = tokens_.peek();
    if (tokens_.accept(u'*')) {
        item.text = first.text;
        return item;
    }
    const bool qualified = tokens_.peek(1).is(u'.') || tokens_.peek(1).is(u'!');
    if (tokens_.atName() && qualified && tokens_.peek(2).is(u'*')) {
        item.starTable = nameOf(tokens_.take());
        tokens_.take();
        tokens_.take();
        item.text = tokens_.textSince(first);
        return item;
    }
    if (atEmptyClause() || tokens_.at(u',') || tokens_.at(Keyword::Into)) tokens_.fail(selectSyntax);
    item.expression = expressions_.parse();
    item.text = item.expression->text;
    if (tokens_.accept(Keyword::As)) item.alias = tokens_.takeName(selectSyntax);
    return item;
}

void SelectParser::parseFrom(SelectStatement& select) {
    do {
        select.from.push_back(parseJoin());
    } while (tokens_.accept(u','));
    if (!atClauseEnd()) tokens_.fail(fromSyntax);
}

std::optional<JoinKind> SelectParser::acceptJoinKind() {
    JoinKind kind = JoinKind::Inner;
    if (tokens_.at(Keyword::Left))
        kind = JoinKind::Left;
    else if (tokens_.at(Keyword::Right))
        kind = JoinKind::Right;
    else if (!tokens_.at(Keyword::Inner))
        return {};
    tokens_.take();
    if (kind != JoinKind::Inner) tokens_.accept(Keyword::Outer);
    tokens_.expect(Keyword::Join, fromSyntax);
    return kind;
}

// One join at most: more tables need parentheses.
FromPtr SelectParser::parseJoin() {
    FromPtr left = parseSource();
    const auto kind = acceptJoinKind();
    if (!kind) return left;
    FromPtr right = parseSource();
    tokens_.expect(Keyword::On, joinSyntax);
    ExpressionPtr on = expressions_.parse();
    const bool ends = tokens_.at(u')') || tokens_.at(u',') || tokens_.at(Keyword::Set) || atClauseEnd();
    if (!ends) tokens_.fail(expressionSyntax);
    return std::make_unique<FromItem>(FromItem{Join{*kind, std::move(left), std::move(right), std::move(on)}});
}

FromPtr SelectParser::parseSource() {
    const TokenStream::Level level(tokens_);
    if (tokens_.atSubquery()) return std::make_unique<FromItem>(FromItem{parseDerived()});
    if (!tokens_.accept(u'(')) return std::make_unique<FromItem>(FromItem{parseTable(fromSyntax)});
    FromPtr inner = parseJoin();
    tokens_.expect(u')', fromSyntax);
    return inner;
}

TableSource SelectParser::parseTable(mkl::Long errorNumber) {
    TableSource source;
    source.table = tokens_.takeName(errorNumber);
    if (tokens_.accept(Keyword::As))
        source.alias = tokens_.takeName(errorNumber);
    else
        source.alias = acceptTableAlias();
    return source;
}

TableSource SelectParser::parseDerived() {
    tokens_.take();
    TableSource source;
    source.derived = parseNested();
    tokens_.expect(u')', fromSyntax);
    if (tokens_.accept(Keyword::As))
        source.alias = tokens_.takeName(fromSyntax);
    else
        source.alias = acceptTableAlias();
    return source;
}

// Without AS only what has no place in the grammar.
QStringView SelectParser::acceptTableAlias() {
    const Token& next = tokens_.peek();
    const bool isAlias =
        next.kind == TokenKind::Bracketed || (next.kind == TokenKind::Word && next.keyword == Keyword::None);
    return isAlias ? nameOf(tokens_.take()) : QStringView();
}

ExpressionPtr SelectParser::parseWhere() {
    if (!tokens_.accept(Keyword::Where)) return {};
    return parseCondition(whereSyntax);
}

ExpressionPtr SelectParser::parseCondition(mkl::Long errorNumber) {
    if (atEmptyClause()) tokens_.fail(errorNumber);
    ExpressionPtr condition = expressions_.parse();
    if (!atClauseEnd()) tokens_.fail(expressionSyntax);
    return condition;
}

void SelectParser::parseGroupBy(SelectStatement& select) {
    if (!acceptClause(Keyword::Group)) return;
    if (atEmptyClause()) tokens_.fail(groupBySyntax);
    select.groupBy = expressions_.parseList();
    if (!atClauseEnd()) tokens_.fail(groupBySyntax);
}

std::vector<OrderItem> SelectParser::parseOrderList() {
    std::vector<OrderItem> items;
    do {
        if (atEmptyClause()) tokens_.fail(orderBySyntax);
        OrderItem item;
        item.expression = expressions_.parse();
        item.descending = tokens_.accept(Keyword::Desc);
        if (!item.descending) tokens_.accept(Keyword::Asc);
        items.push_back(std::move(item));
    } while (tokens_.accept(u','));
    if (!atClauseEnd()) tokens_.fail(orderBySyntax);
    return items;
}

bool SelectParser::acceptClause(Keyword first) {
    if (!tokens_.at(first) || !tokens_.peek(1).is(Keyword::By)) return false;
    tokens_.take();
    tokens_.take();
    return true;
}

// Nothing here that could be an operand.
bool SelectParser::atEmptyClause() const {
    const bool isClause = tokens_.at(Keyword::Group) || tokens_.at(Keyword::Order);
    return atClauseEnd() && (isClause || !tokens_.atName());
}

bool SelectParser::atClauseEnd() const {
    const Token& token = tokens_.peek();
    switch (token.keyword) {
    case Keyword::From:
    case Keyword::Where:
    case Keyword::Having:
    case Keyword::Union: return true;
    case Keyword::Group:
    case Keyword::Order: return tokens_.peek(1).is(Keyword::By);
    default: return atQueryEnd();
    }
}

} // namespace jet
