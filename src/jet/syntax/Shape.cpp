#include "jet/syntax/Shape.h"

#include "jet/syntax/Lexer.h"

#include <cstring>

namespace jet {

namespace {

// Marks of literals come from the private use area: no token begins with such a character.
constexpr char16_t firstMark = 0xE000;

char16_t markOf(TokenKind kind) {
    return static_cast<char16_t>(firstMark + static_cast<int>(kind));
}

} // namespace

Shape shapeOf(QStringView text) {
    Shape shape;
    Lexer lexer(text);
    // A token and the separator behind it are at most twice as long as the token in the text.
    shape.key.resize(2 * text.size());
    auto* const begin = reinterpret_cast<char16_t*>(shape.key.data());
    char16_t* to = begin;
    for (Token token = lexer.next(); token.kind != TokenKind::End; token = lexer.next()) {
        if (token.isLiteral()) {
            shape.literals.append(literalValue(token));
            *to++ = markOf(token.kind);
        } else {
            std::memcpy(to, token.text.utf16(), static_cast<size_t>(token.text.size()) * sizeof(char16_t));
            to += token.text.size();
        }
        *to++ = u' ';
    }
    shape.key.truncate(to - begin);
    return shape;
}

} // namespace jet
