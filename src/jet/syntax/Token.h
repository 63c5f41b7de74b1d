#pragma once
// Tokens of the dialect and its reserved words.
#include "base/types.h"

#include <QStringView>

namespace jet {

enum class TokenKind : quint8 { End, Word, Bracketed, Integer, Real, Text, Date, Symbol };

/// Words with a place in the grammar. Most of them are names wherever a name fits.
enum class Keyword : quint8 {
    None,
    All,
    And,
    Any,
    As,
    Asc,
    Between,
    By,
    Delete,
    Desc,
    Distinct,
    DistinctRow,
    Eqv,
    Exists,
    False,
    From,
    Group,
    Having,
    Imp,
    In,
    Inner,
    Insert,
    Into,
    Is,
    Join,
    Left,
    Like,
    Mod,
    No,
    Not,
    Null,
    Off,
    On,
    Or,
    Order,
    Outer,
    Parameters,
    Percent,
    Right,
    Select,
    Set,
    Some,
    Top,
    True,
    Union,
    Update,
    Values,
    Where,
    Xor,
    Yes
};

/// Comparisons of two characters are one symbol each.
inline constexpr char16_t lessOrEqualSign = u'≤';
inline constexpr char16_t greaterOrEqualSign = u'≥';
inline constexpr char16_t notEqualSign = u'≠';

struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None; ///< of a Word, filled in by the token stream
    char16_t symbol = 0;             ///< of a Symbol
    int literal = -1;                ///< number of the literal in the statement
    QStringView text;                ///< as written, brackets and quotes included

    bool isLiteral() const { return kind >= TokenKind::Integer && kind <= TokenKind::Date; }
    bool isNumber() const { return kind == TokenKind::Integer || kind == TokenKind::Real; }
    bool is(Keyword word) const { return keyword == word && word != Keyword::None; }
    bool is(char16_t character) const { return kind == TokenKind::Symbol && symbol == character; }
};

/// The keyword that the word is, without regard to case, or None.
Keyword keywordOf(QStringView word);
/// True, False, Null: what they stand for goes before a name.
bool isConstant(Keyword keyword);
/// Whether the word joins operands, or stands before one.
bool isOperator(Keyword keyword);
/// Whether the word is a name without brackets only where what follows leaves no other reading.
bool isStrict(Keyword keyword);

} // namespace jet
