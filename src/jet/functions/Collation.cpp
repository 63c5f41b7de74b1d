#include "jet/functions/Collation.h"

#include "jet/functions/Letters.h"

#include <QList>
#include <QString>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <optional>

namespace jet {

namespace {

// Weights of base letters. A class takes all characters that have no weight of their own; their
// number follows, so that different characters never compare equal.
constexpr std::u32string_view punctuation = U"!\"#$%&()*,./:;?@[\\]^_`{|}~+<=>";
constexpr uchar blankWeight = 2;
constexpr uchar otherSpaceClass = 3;
constexpr uchar firstPunctuation = 4;
constexpr uchar symbolClass = firstPunctuation + punctuation.size();
constexpr uchar firstDigit = symbolClass + 1;
constexpr uchar otherNumberClass = firstDigit + 10;
constexpr uchar firstLetter = otherNumberClass + 1;
constexpr uchar otherLetterClass = firstLetter + 26;

// The three parts of a key are divided by a byte below all weights. Every base letter puts a mark
// into the part of the accents, so that accents stay with their letters.
constexpr char separator = 1;
constexpr char letterMark = 2;
constexpr uchar firstAccent = 3; // U+0300
constexpr uchar otherAccentClass = 0xF0;

constexpr char32_t firstCombining = 0x300, lastCombining = 0x36F;
constexpr char32_t shortStroke = 0x335, longSolidus = 0x338;

// Letters with a stroke through them have no decomposition of their own.
struct StrokeLetter {
    char32_t letter, base, accent;
};
constexpr StrokeLetter strokeLetters[] = {{U'ø', U'o', longSolidus},
                                          {U'đ', U'd', shortStroke},
                                          {U'ħ', U'h', shortStroke},
                                          {U'ł', U'l', longSolidus},
                                          {U'ŧ', U't', shortStroke}};

constexpr uchar weightOfLetter(char32_t c) {
    if (c >= U'a' && c <= U'z') return static_cast<uchar>(firstLetter + (c - U'a'));
    if (c >= U'0' && c <= U'9') return static_cast<uchar>(firstDigit + (c - U'0'));
    if (c == U' ') return blankWeight;
    const size_t place = punctuation.find(c);
    return place == std::u32string_view::npos ? 0 : static_cast<uchar>(firstPunctuation + place);
}

uchar classOf(char32_t c) {
    if (QChar::isLetter(c) || QChar::category(c) == QChar::Mark_SpacingCombining) return otherLetterClass;
    if (QChar::isNumber(c)) return otherNumberClass;
    const auto category = QChar::category(c);
    const bool invisible = QChar::isSpace(c) || category == QChar::Other_Control || category == QChar::Other_Format;
    return invisible ? otherSpaceClass : symbolClass;
}

// Hyphens and apostrophes weigh last; 0 for all others.
constexpr uchar weightOfHyphen(char32_t c) {
    switch (c) {
    case U'\'': return 2;
    case U'\u2019': return 3;
    case U'-': return 4;
    case U'\u00AD': return 5;
    case U'\u2010': return 6;
    case U'\u2011': return 7;
    default: return 0;
    }
}

// What a Latin character adds to the key, worked out once.
struct LatinWeight {
    uchar letter = 0; // 0: a hyphen, or no Latin character at all
    uchar secondLetter = 0;
    uchar accent = 0;
    uchar hyphen = 0;
    bool isKnown() const { return letter || hyphen; }
};

constexpr char32_t latinEnd = 0x180;
using LatinTable = std::array<LatinWeight, latinEnd>;

LatinWeight latinWeight(char32_t c) {
    LatinWeight weight;
    weight.hyphen = weightOfHyphen(c);
    if (weight.hyphen) return weight;
    const QList<uint> parts = QString::fromUcs4(&c, 1).normalized(QString::NormalizationForm_D).toUcs4();
    FoldedCharacter base = foldCharacter(parts[0]);
    char32_t accent = parts.size() > 1 ? parts[1] : 0;
    for (const StrokeLetter& stroke : strokeLetters) {
        if (stroke.letter != base.first) continue;
        base.first = stroke.base;
        accent = stroke.accent;
    }
    weight.letter = weightOfLetter(base.first);
    if (!weight.letter) return weight;
    if (base.second) weight.secondLetter = weightOfLetter(base.second);
    if (accent) weight.accent = static_cast<uchar>(firstAccent + (accent - firstCombining));
    return weight;
}

const LatinTable& latinTable() {
    static const LatinTable table = [] {
        LatinTable weights;
        for (char32_t c = 0; c < latinEnd; ++c)
            weights[c] = latinWeight(c);
        return weights;
    }();
    return table;
}

class KeyBuilder {
public:
    void add(char32_t c) {
        const char32_t folded = QChar::toCaseFolded(c);
        const LatinWeight weight = folded < latinEnd ? latinTable()[folded] : LatinWeight{0, 0, 0, weightOfHyphen(c)};
        if (weight.hyphen) {
            addNumber(hyphens_, letters_, 2);
            hyphens_.append(static_cast<char>(weight.hyphen));
        } else if (weight.letter) {
            addLetter(weight.letter);
            if (weight.secondLetter) addLetter(weight.secondLetter);
            if (weight.accent) accents_.append(static_cast<char>(weight.accent));
        } else if (const auto category = QChar::category(c);
                   category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing) {
            addAccent(c);
        } else {
            addLetter(classOf(folded));
            addNumber(base_, folded, 2);
        }
    }

    QByteArray key() {
        trim(accents_, letterMark);
        base_.append(separator);
        base_.append(accents_.constData(), accents_.size());
        base_.append(separator);
        base_.append(hyphens_.constData(), hyphens_.size());
        trim(base_, separator);
        return {base_.constData(), base_.size()};
    }

private:
    using Bytes = QVarLengthArray<char, 256>;

    void addLetter(uchar weight) {
        ++letters_;
        base_.append(static_cast<char>(weight));
        accents_.append(letterMark);
    }

    void addAccent(char32_t c) {
        if (c >= firstCombining && c <= lastCombining) {
            accents_.append(static_cast<char>(firstAccent + (c - firstCombining)));
            return;
        }
        accents_.append(static_cast<char>(otherAccentClass));
        addNumber(accents_, c, firstAccent);
    }

    // Five bytes of seven bits, none below the offset.
    static void addNumber(Bytes& bytes, char32_t number, uchar offset) {
        for (int shift = 28; shift >= 0; shift -= 7)
            bytes.append(static_cast<char>(offset + ((number >> shift) & 0x7F)));
    }

    static void trim(Bytes& bytes, char last) {
        while (!bytes.isEmpty() && bytes.back() == last)
            bytes.removeLast();
    }

    Bytes base_, accents_, hyphens_;
    char32_t letters_ = 0;
};

// Reads base letters from a Latin text of either encoding.
template<class Unit>
class LatinLetters {
public:
    static constexpr int end = 0;
    static constexpr int notLatin = -1;

    LatinLetters(const Unit* from, const Unit* to)
        : at_(from)
        , to_(to) {}

    /// Weight of the next base letter, or end, or notLatin.
    int next() {
        if (pending_) {
            accent_ = 0;
            return std::exchange(pending_, 0);
        }
        while (at_ != to_) {
            const char32_t c = take();
            if (c >= latinEnd) return notLatin;
            const LatinWeight& weight = table_[c];
            if (!weight.isKnown()) return notLatin;
            hyphens_ = hyphens_ || weight.hyphen;
            if (weight.hyphen) continue;
            pending_ = weight.secondLetter;
            accent_ = weight.accent;
            return weight.letter;
        }
        return end;
    }
    int accent() const { return accent_; }    ///< of the letter read last
    bool hyphens() const { return hyphens_; } ///< seen so far

private:
    char32_t take() {
        const auto unit = static_cast<std::make_unsigned_t<Unit>>(*at_++);
        if constexpr (sizeof(Unit) == 1) {
            if (unit < 0x80) return unit;
            const bool twoBytes = unit >= 0xC2 && unit <= 0xDF && at_ != to_ && (*at_ & 0xC0) == 0x80;
            return twoBytes ? (unit & 0x1FU) << 6 | (static_cast<uchar>(*at_++) & 0x3FU) : latinEnd;
        }
        return unit;
    }

    const Unit* at_;
    const Unit* to_;
    const LatinTable& table_ = latinTable();
    int pending_ = 0;
    int accent_ = 0;
    bool hyphens_ = false;
};

template<class Text>
Text withoutTrailingBlanks(Text text) {
    while (!text.empty() && text.back() == typename Text::value_type(' '))
        text.remove_suffix(1);
    return text;
}

// What both texts begin with decides nothing; a character stays whole.
template<class Text>
size_t commonPrefix(Text a, Text b) {
    size_t size = 0;
    const size_t most = std::min(a.size(), b.size());
    while (size < most && a[size] == b[size])
        ++size;
    if constexpr (sizeof(typename Text::value_type) == 1) {
        const auto isInside = [](Text text, size_t at) { return at < text.size() && (text[at] & 0xC0) == 0x80; };
        while (size > 0 && (isInside(a, size) || isInside(b, size)))
            --size;
    }
    return size;
}

// Nothing where the texts must be compared by their keys.
template<class Text>
std::optional<int> compareLatin(Text a, Text b) {
    using Letters = LatinLetters<typename Text::value_type>;
    a = withoutTrailingBlanks(a);
    b = withoutTrailingBlanks(b);
    const size_t common = commonPrefix(a, b);
    Letters left(a.data() + common, a.data() + a.size()), right(b.data() + common, b.data() + b.size());
    int accentOrder = 0;
    for (;;) {
        const int x = left.next(), y = right.next();
        if (x == Letters::notLatin || y == Letters::notLatin) return {};
        if (x != y) return x - y;
        if (x == Letters::end) break;
        if (accentOrder == 0) accentOrder = left.accent() - right.accent();
    }
    if (accentOrder == 0 && (left.hyphens() || right.hyphens())) return {};
    return accentOrder;
}

// Weights of the ASCII characters that are one letter each; 0 for hyphens, apostrophes and all other bytes.
constexpr std::array<uchar, 256> asciiTable = [] {
    std::array<uchar, 256> weights{};
    for (char32_t c = 0; c < 0x80; ++c)
        weights[c] = weightOfHyphen(c) ? uchar(0) : weightOfLetter(c >= U'A' && c <= U'Z' ? c + 0x20 : c);
    return weights;
}();

// Letters without accents differ in their weights or not at all. Nothing where other characters take part.
std::optional<int> compareAscii(std::string_view a, std::string_view b) {
    a = withoutTrailingBlanks(a);
    b = withoutTrailingBlanks(b);
    const size_t common = std::min(a.size(), b.size());
    for (size_t at = 0; at < common; ++at) {
        const uchar x = asciiTable[static_cast<uchar>(a[at])], y = asciiTable[static_cast<uchar>(b[at])];
        if (x == 0 || y == 0) return {};
        if (x != y) return x - y;
    }
    if (a.size() == b.size()) return 0;
    const uchar next = asciiTable[static_cast<uchar>(a.size() > common ? a[common] : b[common])];
    if (next == 0) return {};
    return a.size() > common ? 1 : -1;
}

int compareKeys(QStringView a, QStringView b) {
    return sortKey(a).compare(sortKey(b));
}

} // namespace

int compare(QStringView a, QStringView b) {
    const auto order = compareLatin(std::u16string_view(a.utf16(), static_cast<size_t>(a.size())),
                                    std::u16string_view(b.utf16(), static_cast<size_t>(b.size())));
    return order ? *order : compareKeys(a, b);
}

int compareUtf8(std::string_view a, std::string_view b) {
    if (const auto order = compareAscii(a, b)) return *order;
    const auto order = compareLatin(a, b);
    return order ? *order : compareKeys(QString::fromUtf8(a), QString::fromUtf8(b));
}

QByteArray sortKey(QStringView text) {
    while (text.endsWith(u' '))
        text.chop(1);
    QString decomposed;
    for (const QChar c : text) {
        if (c.unicode() < latinEnd) continue;
        decomposed = text.toString().normalized(QString::NormalizationForm_D);
        text = decomposed;
        break;
    }
    KeyBuilder builder;
    for (qsizetype at = 0; at < text.size();)
        builder.add(takeCharacter(text, at));
    return builder.key();
}

} // namespace jet
