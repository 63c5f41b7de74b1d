#include "jet/ActionParser.h"

#include "jet/Lexer.h"

namespace jet {

namespace {

constexpr mkl::Long expressionSyntax = 3075;
constexpr mkl::Long deleteTable = 3128;
constexpr mkl::Long deleteSyntax = 3130;
constexpr mkl::Long insertSyntax = 3134;
constexpr mkl::Long updateSyntax = 3144;

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
    UpdateStatement update;
    update.table = selects_.parseTable(updateSyntax);
    tokens_.expect(Keyword::Set, updateSyntax);
    do {
        update.assignments.push_back(parseAssignment());
    } while (tokens_.accept(u','));
    update.where = selects_.parseWhere();
    expectEnd(expressionSyntax);
    return update;
}

Assignment ActionParser::parseAssignment() {
    const TokenKind kind = tokens_.peek().kind;
    if (kind != TokenKind::Word && kind != TokenKind::Bracketed) tokens_.fail(updateSyntax);
    Assignment assignment;
    assignment.target = expressions_.parseName();
    tokens_.expect(u'=', updateSyntax);
    assignment.value = expressions_.parse();
    return assignment;
}

DeleteStatement ActionParser::parseDelete() {
    tokens_.take();
    DeleteStatement statement;
    if (!tokens_.accept(u'*') && tokens_.atName()) {
        statement.starTable = nameOf(tokens_.take());
        if (!tokens_.accept(u'.') && !tokens_.accept(u'!')) tokens_.fail(deleteTable);
        tokens_.expect(u'*', deleteSyntax);
    }
    tokens_.expect(Keyword::From, deleteSyntax);
    statement.table = selects_.parseTable(deleteSyntax);
    statement.where = selects_.parseWhere();
    expectEnd(deleteSyntax);
    return statement;
}

} // namespace jet
