#pragma once
// Characters as the order of texts and the patterns see them.
#include <QChar>
#include <QStringView>

namespace jet {

/// The character at that place (a pair of surrogates is one); the place moves behind it.
inline char32_t takeCharacter(QStringView text, qsizetype& at) {
    const QChar c = text[at++];
    if (c.isHighSurrogate() && at < text.size() && text[at].isLowSurrogate())
        return QChar::surrogateToUcs4(c, text[at++]);
    return c.unicode();
}

/// A character without its case; ß, æ and œ are two letters.
struct FoldedCharacter {
    char32_t first = 0;
    char32_t second = 0; ///< 0 for a single letter
};

inline FoldedCharacter foldCharacter(char32_t c) {
    if (c < 0x80) return {c >= U'A' && c <= U'Z' ? c + 0x20 : c};
    const char32_t folded = QChar::toCaseFolded(c);
    switch (folded) {
    case U'ß': return {U's', U's'};
    case U'æ': return {U'a', U'e'};
    case U'œ': return {U'o', U'e'};
    default: return {folded};
    }
}

} // namespace jet
