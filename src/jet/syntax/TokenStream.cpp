#include "jet/syntax/TokenStream.h"

#include "jet/syntax/Lexer.h"

namespace jet {

TokenStream::TokenStream(QStringView text)
    : inWork_(text)
    , text_(text) {
    Lexer lexer(text);
    do {
        tokens_.push_back(lexer.next());
        if (tokens_.back().kind == TokenKind::Word) tokens_.back().keyword = keywordOf(tokens_.back().text);
    } while (tokens_.back().kind != TokenKind::End);
}

const Token& TokenStream::peek(qsizetype ahead) const {
    const auto last = static_cast<qsizetype>(tokens_.size()) - 1;
    return tokens_[static_cast<size_t>(qMin(position_ + ahead, last))];
}

Token TokenStream::take() {
    const Token& token = peek();
    if (token.kind != TokenKind::End) ++position_;
    return token;
}

bool TokenStream::accept(Keyword keyword) {
    if (!at(keyword)) return false;
    ++position_;
    return true;
}

bool TokenStream::accept(char16_t symbol) {
    if (!at(symbol)) return false;
    ++position_;
    return true;
}

void TokenStream::expect(Keyword keyword, mkl::Long errorNumber) {
    if (!accept(keyword)) fail(errorNumber);
}

void TokenStream::expect(char16_t symbol, mkl::Long errorNumber) {
    if (!accept(symbol)) fail(errorNumber);
}

bool TokenStream::atName(qsizetype ahead) const {
    const Token& token = peek(ahead);
    if (token.kind != TokenKind::Word) return token.kind == TokenKind::Bracketed;
    return !isStrict(token.keyword) || (!isConstant(token.keyword) && followsName(ahead + 1, token.keyword));
}

// What begins an operand may follow the word in its own meaning, so it tells nothing.
bool TokenStream::followsName(qsizetype ahead, Keyword name) const {
    const Token& next = peek(ahead);
    switch (next.kind) {
    case TokenKind::End: return !isOperator(name) && name != Keyword::Select && name != Keyword::Distinct;
    case TokenKind::Symbol:
        return next.symbol == u',' || next.symbol == u')' || next.symbol == u'.' || next.symbol == u'!' ||
               next.symbol == u'=' || next.symbol == u'<' || next.symbol == u'>' || next.symbol == lessOrEqualSign ||
               next.symbol == greaterOrEqualSign || next.symbol == notEqualSign;
    case TokenKind::Word:
        if (name == Keyword::Distinct) return false;
        return next.is(Keyword::From) || next.is(Keyword::As) || next.is(Keyword::Asc) || next.is(Keyword::Desc);
    default: return false;
    }
}

bool TokenStream::atSubquery(qsizetype ahead) const {
    return peek(ahead).is(u'(') && peek(ahead + 1).is(Keyword::Select) && !atName(ahead + 1);
}

QStringView TokenStream::takeName(mkl::Long errorNumber) {
    if (!atName()) fail(errorNumber);
    return nameOf(take());
}

void TokenStream::fail(mkl::Long errorNumber) const {
    const Token& token = peek();
    if (token.kind != TokenKind::End)
        raiseAt(errorNumber, token.text, {excerpt(text_.sliced(token.text.utf16() - text_.utf16()))});
    raiseAt(errorNumber, text_.sliced(text_.size()),
            {excerpt(text_)}); // the end came too early: the whole text is to blame
}

QStringView TokenStream::textSince(const Token& first) const {
    if (position_ == 0) return {};
    const Token& last = tokens_[static_cast<size_t>(position_ - 1)];
    const auto* const begin = first.text.utf16();
    return {begin, last.text.utf16() + last.text.size()};
}

TokenStream::Level::Level(TokenStream& stream)
    : stream_(stream) {
    if (stream_.depth_ >= maximalDepth) raiseAt(3360, stream_.peek().text);
    ++stream_.depth_;
}

} // namespace jet
