#include "jet/syntax/Lexer.h"

#include "jet/functions/DateLiteral.h"

#include <array>

using namespace Qt::StringLiterals;

namespace jet {

namespace {

constexpr mkl::Long syntaxError = 3075;
constexpr mkl::Long badBrackets = 3126;

enum Class : quint8 { Other, Blank, Letter, Digit, Single };

constexpr std::array<Class, 128> classes = [] {
    std::array<Class, 128> table{};
    for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'})
        table[static_cast<size_t>(c)] = Blank;
    for (const char c : {'(', ')', ',', ';', '.', '!', '=', '+', '-', '*', '/', '\\', '^', '&', '<', '>'})
        table[static_cast<size_t>(c)] = Single;
    for (size_t c = '0'; c <= '9'; ++c)
        table[c] = Digit;
    for (size_t c = 'A'; c <= 'Z'; ++c)
        table[c] = table[c + 32] = Letter;
    table['_'] = Letter;
    return table;
}();

Class classOf(QChar c) {
    if (c.unicode() < 128) return classes[c.unicode()];
    return c.isLetterOrNumber() || c.isMark() ? Letter : Other;
}

bool isNameCharacter(QChar c) {
    const Class kind = classOf(c);
    return kind == Letter || kind == Digit;
}

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool isHexDigit(QChar c) {
    return isDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

// Whether the digits are a number that a Long holds.
bool fitsLong(QStringView digits) {
    qint64 value = 0;
    for (const QChar c : digits) {
        value = value * 10 + (c.unicode() - u'0');
        if (value > std::numeric_limits<mkl::Long>::max()) return false;
    }
    return true;
}

} // namespace

Lexer::Lexer(QStringView text)
    : inWork_(text)
    , rest_(text) {
    if (text.size() > maximalLength) raiseAt(3360, text.sliced(maximalLength));
}

Token Lexer::next() {
    qsizetype blanks = 0;
    while (blanks < rest_.size() && classOf(rest_[blanks]) == Blank)
        ++blanks;
    rest_ = rest_.sliced(blanks);
    if (rest_.isEmpty()) return {};
    const QChar first = rest_.front();
    switch (classOf(first)) {
    case Letter: return word();
    case Digit: return number();
    case Single:
        if (first == u'.' && isDigit(at(1))) return number();
        if (first == u'&' && (at(1) == u'H' || at(1) == u'h') && isHexDigit(at(2))) return hexadecimal();
        if (first == u'<' && at(1) == u'=') return symbol(lessOrEqualSign, 2);
        if (first == u'<' && at(1) == u'>') return symbol(notEqualSign, 2);
        if (first == u'>' && at(1) == u'=') return symbol(greaterOrEqualSign, 2);
        return symbol(first.unicode(), 1);
    default: break;
    }
    if (first == u'[') return bracketed();
    if (first == u']' && inOldDerivedTable_) {
        inOldDerivedTable_ = false;
        return symbol(u')', 2);
    }
    if (first == u'\'' || first == u'"') return quoted(first);
    if (first == u'#') return date();
    raiseAt(syntaxError, rest_.first(first.isHighSurrogate() && rest_.size() > 1 ? 2 : 1), {excerpt(rest_)});
}

Token Lexer::take(TokenKind kind, qsizetype length) {
    Token token;
    token.kind = kind;
    token.text = rest_.first(length);
    rest_ = rest_.sliced(length);
    return token;
}

Token Lexer::takeLiteral(TokenKind kind, qsizetype length) {
    Token token = take(kind, length);
    token.literal = literals_++;
    return token;
}

Token Lexer::symbol(char16_t character, qsizetype length) {
    Token token = take(TokenKind::Symbol, length);
    token.symbol = character;
    return token;
}

// "[SELECT …]. AS x", the older spelling of "(SELECT …) AS x".
bool Lexer::atOldDerivedTable() const {
    static constexpr QStringView verb = u"SELECT", as = u"AS";
    if (inOldDerivedTable_ || !rest_.sliced(1).startsWith(verb, Qt::CaseInsensitive)) return false;
    if (!at(1 + verb.size()).isSpace()) return false;
    const qsizetype end = rest_.indexOf(u']');
    if (end < 0 || at(end + 1) != u'.' || !at(end + 2).isSpace()) return false;
    const QStringView behind = rest_.sliced(end + 2).trimmed();
    return behind.startsWith(as, Qt::CaseInsensitive) && behind.size() > as.size() && behind[as.size()].isSpace();
}

Token Lexer::bracketed() {
    if (atOldDerivedTable()) {
        inOldDerivedTable_ = true;
        return symbol(u'(', 1);
    }
    qsizetype end = 1;
    while (end < rest_.size() && rest_[end] != u']') {
        const QChar c = rest_[end];
        if (c == u'[' || c == u'!' || c == u'`' || c.isNull())
            raiseAt(badBrackets, rest_.first(end + 1), {excerpt(rest_)});
        ++end;
    }
    if (end == rest_.size() || rest_.sliced(1, end - 1).trimmed().isEmpty())
        raiseAt(badBrackets, rest_.first(qMin(end + 1, rest_.size())), {excerpt(rest_)});
    return take(TokenKind::Bracketed, end + 1);
}

Token Lexer::quoted(QChar quote) {
    qsizetype end = 1;
    while (true) {
        end = rest_.indexOf(quote, end);
        if (end < 0) raiseAt(syntaxError, rest_, {excerpt(rest_)});
        if (at(end + 1) != quote) break;
        end += 2;
    }
    return takeLiteral(TokenKind::Text, end + 1);
}

Token Lexer::date() {
    const qsizetype end = rest_.indexOf(u'#', 1);
    if (end < 0) raiseAt(syntaxError, rest_, {excerpt(rest_)});
    return takeLiteral(TokenKind::Date, end + 1);
}

qsizetype Lexer::digitsFrom(qsizetype offset) const {
    while (isDigit(at(offset)))
        ++offset;
    return offset;
}

Token Lexer::number() {
    qsizetype end = digitsFrom(0);
    bool whole = true;
    if (at(end) == u'.') {
        whole = false;
        end = digitsFrom(end + 1);
    }
    if (at(end) == u'E' || at(end) == u'e') {
        const qsizetype exponent = end + (at(end + 1) == u'+' || at(end + 1) == u'-' ? 2 : 1);
        if (isDigit(at(exponent))) {
            whole = false;
            end = digitsFrom(exponent);
        }
    }
    const bool isLong = whole && fitsLong(rest_.first(end));
    return takeLiteral(isLong ? TokenKind::Integer : TokenKind::Real, end);
}

Token Lexer::hexadecimal() {
    qsizetype end = 2;
    while (isHexDigit(at(end)))
        ++end;
    return takeLiteral(TokenKind::Integer, end);
}

Token Lexer::word() {
    qsizetype end = 1;
    while (end < rest_.size() && isNameCharacter(rest_[end]))
        ++end;
    return take(TokenKind::Word, end);
}

QStringView nameOf(const Token& token) {
    if (token.kind != TokenKind::Bracketed) return token.text;
    return token.text.sliced(1, token.text.size() - 2).trimmed();
}

namespace {

mkl::Variant numberValue(const Token& token) {
    const bool isPlain = token.kind == TokenKind::Integer && token.text.front() != u'&';
    if (isPlain) return token.text.toInt();
    double number = 0;
    if (!mkl::parseNumber(token.text, number)) raiseAt(syntaxError, token.text, {excerpt(token.text)});
    if (token.kind == TokenKind::Integer) return static_cast<mkl::Long>(number);
    return number;
}

mkl::Variant textValue(const Token& token) {
    const QChar quote = token.text.front();
    QString text = token.text.sliced(1, token.text.size() - 2).toString();
    if (text.contains(quote)) text.replace(QString(2, quote), QString(quote));
    return text;
}

mkl::Variant dateValue(const Token& token) {
    const auto days = parseDateLiteral(token.text.sliced(1, token.text.size() - 2));
    if (!days) raiseAt(syntaxError, token.text, {excerpt(token.text)});
    return mkl::Variant::date(*days);
}

} // namespace

mkl::Variant literalValue(const Token& token) {
    switch (token.kind) {
    case TokenKind::Text: return textValue(token);
    case TokenKind::Date: return dateValue(token);
    default: return numberValue(token);
    }
}

} // namespace jet
