#include "jet/syntax/ActionParser.h"

#include "jet/syntax/Lexer.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

constexpr mkl::Long expressionSyntax = 3075;
constexpr mkl::Long deleteTable = 3128;
constexpr mkl::Long deleteSyntax = 3130;
constexpr mkl::Long insertSyntax = 3134;
constexpr mkl::Long parametersSyntax = 3139;
constexpr mkl::Long updateSyntax = 3144;

constexpr std::array<QStringView, 31> typeNames = {
    u"BINARY",     u"BIT",      u"BOOLEAN", u"BYTE",  u"CHAR",   u"COUNTER", u"CURRENCY", u"DATE",
    u"DATETIME",   u"DOUBLE",   u"FLOAT",   u"GUID",  u"INT",    u"INTEGER", u"LOGICAL",  u"LONG",
    u"LONGBINARY", u"LONGTEXT", u"MEMO",    u"MONEY", u"NUMBER", u"NUMERIC", u"REAL",     u"SHORT",
    u"SINGLE",     u"STRING",   u"TEXT",    u"TIME",  u"VALUE",  u"VARCHAR", u"YESNO"};

bool isTypeName(QStringView word) {
    return std::ranges::any_of(typeNames,
                               [&](QStringView name) { return word.compare(name, Qt::CaseInsensitive) == 0; });
}

} // namespace

void ActionParser::expectEnd(mkl::Long errorNumber) const {
    if (!tokens_.atEnd() && !tokens_.at(u';')) tokens_.fail(errorNumber);
}

InsertStatement ActionParser::parseInsert() {
    tokens_.take();
    tokens_.expect(Keyword::Into, insertSyntax);
    InsertStatement insert;
    insert.table = tokens_.takeName(insertSyntax);
    if (tokens_.accept(u'(')) parseColumns(insert);
    if (tokens_.accept(Keyword::Values))
        parseValues(insert);
    else if (tokens_.at(Keyword::Select))
        insert.select = std::make_unique<SelectStatement>(selects_.parse());
    else
        tokens_.fail(insertSyntax);
    return insert;
}

void ActionParser::parseColumns(InsertStatement& insert) {
    do {
        insert.columns.push_back(tokens_.takeName(insertSyntax));
    } while (tokens_.accept(u','));
    tokens_.expect(u')', insertSyntax);
}

void ActionParser::parseValues(InsertStatement& insert) {
    tokens_.expect(u'(', insertSyntax);
    insert.values = expressions_.parseList();
    tokens_.expect(u')', expressionSyntax);
    expectEnd(insertSyntax);
}

UpdateStatement ActionParser::parseUpdate() {
    tokens_.take();
    tokens_.accept(Keyword::DistinctRow);
    UpdateStatement update;
    update.rows.from = parseTables(updateSyntax);
    tokens_.expect(Keyword::Set, updateSyntax);
    do {
        parseAssignment(update.rows);
    } while (tokens_.accept(u','));
    update.rows.where = selects_.parseWhere();
    expectEnd(expressionSyntax);
    return update;
}

std::vector<FromPtr> ActionParser::parseTables(mkl::Long errorNumber) {
    std::vector<FromPtr> tables;
    do {
        if (!tokens_.atName() && !tokens_.at(u'(')) tokens_.fail(errorNumber);
        tables.push_back(selects_.parseJoin());
    } while (tokens_.accept(u','));
    return tables;
}

void ActionParser::parseAssignment(SelectStatement& rows) {
    if (!tokens_.atName()) tokens_.fail(updateSyntax);
    const auto add = [&](ExpressionPtr expression) {
        OutputItem item;
        item.text = expression->text;
        item.expression = std::move(expression);
        rows.outputs.push_back(std::move(item));
    };
    add(expressions_.parseName());
    tokens_.expect(u'=', updateSyntax);
    add(expressions_.parse());
}

DeleteStatement ActionParser::parseDelete() {
    tokens_.take();
    tokens_.accept(Keyword::DistinctRow);
    DeleteStatement statement;
    parseDeleted(statement);
    tokens_.expect(Keyword::From, deleteSyntax);
    statement.rows.from = parseTables(deleteSyntax);
    statement.rows.where = selects_.parseWhere();
    expectEnd(deleteSyntax);
    return statement;
}

// "*", "T.*" or nothing. Of several tables one at most can be meant.
void ActionParser::parseDeleted(DeleteStatement& statement) {
    const Token& first = tokens_.peek();
    statement.place = first.text;
    if (tokens_.accept(u'*') || !tokens_.atName()) return;
    statement.starTable = nameOf(tokens_.take());
    if (!tokens_.accept(u'.') && !tokens_.accept(u'!')) tokens_.fail(deleteTable);
    tokens_.expect(u'*', deleteSyntax);
    statement.place = tokens_.textSince(first);
    if (tokens_.at(u',')) tokens_.fail(deleteTable);
}

void ActionParser::parseParameters() {
    tokens_.take();
    do {
        parseParameter();
    } while (tokens_.accept(u','));
    tokens_.expect(u';', parametersSyntax);
}

void ActionParser::parseParameter() {
    tokens_.takeName(parametersSyntax);
    const Token& type = tokens_.peek();
    if (type.kind != TokenKind::Word || !isTypeName(type.text)) tokens_.fail(parametersSyntax);
    tokens_.take();
    if (!tokens_.accept(u'(')) return;
    if (tokens_.peek().kind != TokenKind::Integer) tokens_.fail(parametersSyntax);
    tokens_.take();
    tokens_.expect(u')', parametersSyntax);
}

} // namespace jet
