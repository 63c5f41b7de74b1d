#pragma once
#include "jet/syntax/ExpressionParser.h"

namespace jet {

/// Reads SELECT statements clause by clause. What cannot follow a clause is an error of that clause.
class SelectParser {
public:
    explicit SelectParser(TokenStream& tokens)
        : tokens_(tokens)
        , expressions_(tokens, [this] { return parseNested(); }) {}
    SelectParser(const SelectParser&) = delete;
    SelectParser& operator=(const SelectParser&) = delete;

    /// One SELECT, or several joined by UNION.
    SelectStatement parse();
    /// The same, where INTO may name a table to make.
    SelectStatement parseWithInto();

    /// A table with its alias, or a join.
    FromPtr parseJoin();
    /// The condition behind WHERE, if WHERE stands here.
    ExpressionPtr parseWhere();
    /// What stands behind ORDER BY.
    std::vector<OrderItem> parseOrderList();

private:
    std::shared_ptr<SelectStatement> parseNested();
    SelectStatement parseOne();
    void parseUnion(SelectStatement& select);
    bool atQueryEnd() const;
    bool atTop() const;
    TableSource parseDerived();
    QStringView acceptTableAlias();
    void parsePredicates(SelectStatement& select);
    void parseTop(SelectStatement& select);
    void parseOutputs(SelectStatement& select);
    OutputItem parseOutput();
    void parseFrom(SelectStatement& select);
    FromPtr parseSource();
    TableSource parseTable(mkl::Long errorNumber);
    std::optional<JoinKind> acceptJoinKind();
    ExpressionPtr parseCondition(mkl::Long errorNumber);
    void parseGroupBy(SelectStatement& select);

    bool acceptClause(Keyword first);
    bool atClauseEnd() const;
    bool atEmptyClause() const;
    bool beginsOperand(qsizetype ahead) const;

    TokenStream& tokens_;
    ExpressionParser expressions_;
    bool mayMakeTable_ = false;
    int nesting_ = 0; ///< queries in parentheses around this place
};

} // namespace jet
