#pragma once
// Cuts a text into tokens. Names keep their case, since an alias is shown as it is written.
#include "base/Variant.h"
#include "jet/model/Raise.h"
#include "jet/syntax/Token.h"

namespace jet {

/// Texts longer than this raise 3360.
inline constexpr qsizetype maximalLength = 64000;

/// Reads tokens from a text that must outlive them. 3075 for what is no token, 3126 for a bad bracket.
class Lexer {
public:
    explicit Lexer(QStringView text);

    /// The next token, at the end again and again End.
    Token next();

private:
    Token symbol(char16_t character, qsizetype length);
    Token bracketed();
    bool atOldDerivedTable() const;
    Token quoted(QChar quote);
    Token date();
    Token number();
    Token hexadecimal();
    Token word();
    Token take(TokenKind kind, qsizetype length);
    Token takeLiteral(TokenKind kind, qsizetype length);
    QChar at(qsizetype offset) const { return offset < rest_.size() ? rest_[offset] : QChar(); }
    qsizetype digitsFrom(qsizetype offset) const;

    TextInWork inWork_;
    QStringView rest_;
    int literals_ = 0;
    bool inOldDerivedTable_ = false;
};

/// The name in a Word or Bracketed token, without brackets and the blanks at its ends.
QStringView nameOf(const Token& token);
/// The value of a literal. 3075 for an impossible date or a number beyond all ranges.
mkl::Variant literalValue(const Token& token);

} // namespace jet
