#include "core/StatementClauses.h"

#include "base/RunTimeError.h"
#include "jet/syntax/Lexer.h"

namespace mkl {

namespace {

constexpr Long syntaxError = 3075;

} // namespace

StatementClauses::StatementClauses(QStringView statement)
    : statement_(statement)
    , end_(statement.size()) {
    readTokens();
    findClauses();
    findInsertedCondition();
}

void StatementClauses::readTokens() {
    jet::Lexer lexer(statement_);
    QList<qsizetype> open;
    bool qualified = false; // behind "." and "!" stands a name, whatever its word
    for (jet::Token token = lexer.next(); token.kind != jet::TokenKind::End; token = lexer.next()) {
        const qsizetype index = tokens_.size();
        if (token.kind == jet::TokenKind::Word && !qualified) token.keyword = jet::keywordOf(token.text);
        qualified = token.is(u'.') || token.is(u'!');
        tokens_.append(token);
        partners_.append(-1);
        if (token.is(u')')) {
            if (open.isEmpty()) throwError(syntaxError, {jet::excerpt(statement_.first(offset(index) + 1))});
            partners_[open.takeLast()] = index;
        }
        if (open.isEmpty()) outerTokens_.append(index);
        if (token.is(u'(')) open.append(index);
    }
    if (!open.isEmpty()) throwError(syntaxError, {jet::excerpt(statement_.sliced(offset(open.last())))});
    if (!tokens_.isEmpty() && tokens_.last().is(u';')) {
        end_ = offset(tokens_.size() - 1);
        tokens_.removeLast();
        outerTokens_.removeLast();
    }
}

void StatementClauses::findClauses() {
    tail_ = orderBy_ = tokens_.size();
    for (const qsizetype i : std::as_const(outerTokens_)) {
        const bool orderBy = is(i, jet::Keyword::Order) && is(i + 1, jet::Keyword::By);
        const bool groupBy = is(i, jet::Keyword::Group) && is(i + 1, jet::Keyword::By);
        if (is(i, jet::Keyword::Union)) union_ = true;
        if (is(i, jet::Keyword::Where) && where_ < 0) where_ = i;
        if (orderBy) orderBy_ = std::min(orderBy_, i);
        if (orderBy || groupBy || is(i, jet::Keyword::Having)) tail_ = std::min(tail_, i);
    }
}

void StatementClauses::findInsertedCondition() {
    if (where_ < 0) return;
    const qsizetype first = where_ + 1;
    const qsizetype behindOwn = partnerOf(first) + 1;
    if (isInsertedCondition(first))
        inserted_ = first;
    else if (behindOwn > 0 && is(behindOwn, jet::Keyword::And) && isInsertedCondition(behindOwn + 1))
        inserted_ = behindOwn + 1;
}

bool StatementClauses::isInsertedCondition(qsizetype open) const {
    return partnerOf(open) == tail_ - 1 && is(open + 1, jet::Keyword::True) && is(open + 2, jet::Keyword::And) &&
           partnerOf(open + 3) == tail_ - 2;
}

bool StatementClauses::is(qsizetype token, jet::Keyword keyword) const {
    return token < tokens_.size() && tokens_[token].is(keyword);
}

qsizetype StatementClauses::partnerOf(qsizetype open) const {
    return open < tokens_.size() ? partners_[open] : -1;
}

QStringView StatementClauses::ownCondition() const {
    if (!hasWhere()) return {};
    if (!hasInsertedCondition()) return between(where_ + 1, tail_);
    return between(where_ + 2, inserted_ - 2);
}

QStringView StatementClauses::beforeWhere() const {
    return statement_.first(offset(hasWhere() ? where_ : tail_)).trimmed();
}

QStringView StatementClauses::afterWhere() const {
    return statement_.sliced(offset(tail_)).trimmed();
}

QStringView StatementClauses::beforeOrderBy() const {
    return statement_.first(offset(orderBy_)).trimmed();
}

QStringView StatementClauses::afterOrderBy() const {
    return statement_.sliced(end_).trimmed();
}

QStringView StatementClauses::between(qsizetype first, qsizetype last) const {
    if (first >= last) return {};
    return statement_.sliced(offset(first), offset(last) - offset(first)).trimmed();
}

qsizetype StatementClauses::offset(qsizetype token) const {
    return token < tokens_.size() ? tokens_[token].text.data() - statement_.data() : end_;
}

} // namespace mkl
