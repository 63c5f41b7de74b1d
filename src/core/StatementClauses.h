#pragma once
// The clauses of a statement, found by its tokens.
#include "jet/syntax/Token.h"

#include <QList>
#include <QString>

namespace mkl {

/// Positions in a statement of which the caller keeps the text. Brackets, quotes and parentheses that do not match
/// raise the dialect's error.
class StatementClauses {
public:
    explicit StatementClauses(QStringView statement);

    bool isUnion() const { return union_; }
    bool hasWhere() const { return where_ >= 0; }
    /// The statement up to its WHERE, or up to where one would stand.
    QStringView beforeWhere() const;
    /// What follows the WHERE clause, the ";" included.
    QStringView afterWhere() const;
    /// The statement up to its ORDER BY, or up to where one would stand.
    QStringView beforeOrderBy() const;
    /// The ";" at the end, or nothing.
    QStringView afterOrderBy() const;

    /// Whether "(True AND (…))" is the condition, alone or behind "(own condition) AND".
    bool hasInsertedCondition() const { return inserted_ >= 0; }
    /// The condition without what was inserted and without the parentheses that the insertion put around it.
    QStringView ownCondition() const;

private:
    void readTokens();
    void findClauses();
    void findInsertedCondition();
    bool isInsertedCondition(qsizetype open) const;
    bool is(qsizetype token, jet::Keyword keyword) const;
    qsizetype partnerOf(qsizetype open) const; ///< -1 for a token that is no "("
    QStringView between(qsizetype first, qsizetype last) const;
    qsizetype offset(qsizetype token) const;

    QStringView statement_;
    QList<jet::Token> tokens_;     ///< without the ";" at the end
    QList<qsizetype> partners_;    ///< by token: its closing parenthesis
    QList<qsizetype> outerTokens_; ///< those outside all parentheses
    qsizetype end_ = 0;            ///< offset of the ";" at the end, or behind the last token
    // Tokens; behind the last one where there is no such clause.
    qsizetype tail_ = 0; ///< GROUP BY, HAVING or ORDER BY
    qsizetype orderBy_ = 0;
    qsizetype where_ = -1;    ///< -1 without one
    qsizetype inserted_ = -1; ///< the parenthesis that opens the inserted condition
    bool union_ = false;
};

} // namespace mkl
