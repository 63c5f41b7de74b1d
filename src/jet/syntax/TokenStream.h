#pragma once
// The tokens of a text with as much look-ahead as a parser wants.
#include "base/types.h"
#include "jet/model/Raise.h"
#include "jet/syntax/Token.h"

#include <vector>

namespace jet {

/// Nesting beyond this raises 3360, long before a stack ends.
inline constexpr int maximalDepth = 250;

class TokenStream {
public:
    /// Cuts the whole text, which must outlive the stream. As long as the stream lives it is the text in work.
    explicit TokenStream(QStringView text);

    /// The reference holds as long as the stream.
    const Token& peek(qsizetype ahead = 0) const;
    Token take();

    bool at(Keyword keyword) const { return peek().is(keyword); }
    bool at(char16_t symbol) const { return peek().is(symbol); }
    bool atEnd() const { return peek().kind == TokenKind::End; }
    bool accept(Keyword keyword);
    bool accept(char16_t symbol);
    void expect(Keyword keyword, mkl::Long errorNumber);
    void expect(char16_t symbol, mkl::Long errorNumber);

    /// Whether the token can stand where the grammar wants a name. A strict word can if what follows it could only
    /// follow a name.
    bool atName(qsizetype ahead = 0) const;
    /// Whether a SELECT in parentheses begins there.
    bool atSubquery(qsizetype ahead = 0) const;
    /// The name there, without brackets.
    QStringView takeName(mkl::Long errorNumber);

    /// Raises the error, naming the token that does not fit and what follows it.
    [[noreturn]] void fail(mkl::Long errorNumber) const;

    /// The text from the token to the last one taken.
    QStringView textSince(const Token& first) const;

    /// Counts the levels of a recursion.
    class Level {
    public:
        explicit Level(TokenStream& stream);
        ~Level() { --stream_.depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        TokenStream& stream_;
    };

private:
    bool followsName(qsizetype ahead, Keyword name) const;

    TextInWork inWork_;
    QStringView text_;
    std::vector<Token> tokens_; // the last one is End
    qsizetype position_ = 0;
    int depth_ = 0;
};

} // namespace jet
