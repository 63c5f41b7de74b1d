#include "jet/functions/Like.h"

#include "base/RunTimeError.h"
#include "jet/functions/Collation.h"
#include "jet/functions/Letters.h"

#include <QVarLengthArray>
#include <array>

namespace jet {

namespace {

constexpr char32_t firstCombining = 0x300;

// Letter and accent as one character, however the text writes them; copies only where it has to.
QStringView composed(QStringView text, QString& buffer) {
    for (const QChar c : text) {
        if (c.unicode() < firstCombining) continue;
        buffer = text.toString().normalized(QString::NormalizationForm_C);
        return buffer;
    }
    return text;
}

// ß, æ and œ keep their one character here, unlike in foldCharacter().
char32_t withoutCase(char32_t c) {
    const FoldedCharacter folded = foldCharacter(c);
    return folded.second ? QChar::toCaseFolded(c) : folded.first;
}

constexpr std::array<char, 256> asciiFolded = [] {
    std::array<char, 256> folded{};
    for (int c = 0; c < 256; ++c)
        folded[static_cast<size_t>(c)] = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 0x20 : c);
    return folded;
}();

bool isAscii(QByteArrayView text) {
    uchar all = 0;
    for (const char c : text)
        all |= static_cast<uchar>(c);
    return all < 0x80;
}

// Reads characters below the accents; anything else, broken bytes included, is one that is not.
char32_t takeLatin(QByteArrayView text, qsizetype& at) {
    const auto first = static_cast<uchar>(text[at++]);
    if (first < 0x80) return first;
    const bool twoBytes = first >= 0xC2 && first < 0xCC && at < text.size() && (text[at] & 0xC0) == 0x80;
    return twoBytes ? (first & 0x1FU) << 6 | (static_cast<uchar>(text[at++]) & 0x3FU) : firstCombining;
}

QString characterText(char32_t c) {
    return QString::fromUcs4(&c, 1);
}

} // namespace

LikePattern::LikePattern(QStringView pattern) {
    QString buffer;
    pattern = composed(pattern, buffer);
    using Kind = Element::Kind;
    for (qsizetype at = 0; at < pattern.size() && !broken_;) {
        const char32_t c = takeCharacter(pattern, at);
        switch (c) {
        case U'*':
            if (elements_.isEmpty() || elements_.back().kind != Kind::AnyRun) elements_.append({Kind::AnyRun});
            break;
        case U'?': elements_.append({Kind::AnyOne}); break;
        case U'#': elements_.append({Kind::Digit}); break;
        case U'[': at = readClass(pattern, at); break;
        default: addLetters(c);
        }
    }
    noteBeginning();
}

void LikePattern::addLetters(char32_t character) {
    const FoldedCharacter folded = foldCharacter(character);
    elements_.append({Element::Kind::Letter, folded.first});
    if (folded.second) elements_.append({Element::Kind::Letter, folded.second});
}

// Reads a class from behind its bracket and returns the place behind it. The empty class consumes nothing.
qsizetype LikePattern::readClass(QStringView pattern, qsizetype at) {
    const qsizetype end = pattern.indexOf(u']', at);
    if (end < 0) {
        broken_ = true;
        return pattern.size();
    }
    const QStringView items = pattern.sliced(at, end - at);
    if (items.isEmpty()) return end + 1;
    CharClass charClass;
    charClass.negated = items.size() > 1 && items[0] == u'!'; // [!] is the character itself
    broken_ = !readClassItems(items.sliced(charClass.negated ? 1 : 0), charClass);
    elements_.append({Element::Kind::Class, 0, classes_.size()});
    classes_.append(charClass);
    return end + 1;
}

// A hyphen between two characters makes a range; first, last or behind a range it stands for itself.
bool LikePattern::readClassItems(QStringView items, CharClass& charClass) {
    for (qsizetype at = 0; at < items.size();) {
        const char32_t first = takeCharacter(items, at);
        if (at + 1 >= items.size() || items[at] != u'-') {
            charClass.characters.append(withoutCase(first));
            continue;
        }
        const char32_t last = takeCharacter(items, ++at);
        const Range range{characterText(first), characterText(last)};
        if (compare(range.first, range.last) > 0) return false;
        charClass.ranges.append(range);
    }
    return true;
}

bool LikePattern::contains(const CharClass& charClass, char32_t character, char32_t folded) {
    if (charClass.characters.contains(folded)) return true;
    if (charClass.ranges.isEmpty()) return false;
    const QString text = characterText(character);
    for (const Range& range : charClass.ranges)
        if (compare(range.first, text) <= 0 && compare(text, range.last) <= 0) return true;
    return false;
}

/// The letters of a text, folded one by one before the match.
class LikePattern::Letters {
public:
    explicit Letters(qsizetype characters)
        : letters_(2 * characters) {} // no character is more than two letters

    void add(char32_t character) {
        const FoldedCharacter folded = foldCharacter(character);
        letters_[static_cast<qsizetype>(size_++)] = {folded.first, character, folded.second != 0};
        if (folded.second) letters_[static_cast<qsizetype>(size_++)] = {folded.second, 0, false};
    }

    size_t size() const { return size_; }
    char32_t folded(size_t at) const { return at_(at).folded; }
    char32_t character(size_t at) const { return at_(at).character ? at_(at).character : at_(at).folded; }
    size_t behindCharacter(size_t at) const { return at + (at_(at).hasSecondHalf ? 2 : 1); }

private:
    const Letter& at_(size_t at) const { return letters_[static_cast<qsizetype>(at)]; }

    QVarLengthArray<Letter, 256> letters_;
    size_t size_ = 0;
};

/// Those of a text of ASCII characters, which needs no preparation.
class LikePattern::AsciiLetters {
public:
    explicit AsciiLetters(QByteArrayView text)
        : text_(text) {}

    size_t size() const { return static_cast<size_t>(text_.size()); }
    char32_t folded(size_t at) const { return static_cast<uchar>(asciiFolded[static_cast<uchar>(text_.data()[at])]); }
    char32_t character(size_t at) const { return static_cast<uchar>(text_.data()[at]); }
    size_t behindCharacter(size_t at) const { return at + 1; }

private:
    QByteArrayView text_;
};

// The place behind what the element takes from the text there, or nothing.
template<class Text>
std::optional<size_t> LikePattern::step(const Element& element, const Text& text, size_t at) const {
    const char32_t folded = text.folded(at);
    switch (element.kind) {
    case Element::Kind::AnyRun: return {};
    case Element::Kind::AnyOne: return text.behindCharacter(at);
    case Element::Kind::Letter: return folded == element.letter ? std::optional(at + 1) : std::nullopt;
    case Element::Kind::Digit: return folded >= U'0' && folded <= U'9' ? std::optional(at + 1) : std::nullopt;
    case Element::Kind::Class: break;
    }
    return stepOverClass(classes_[element.classIndex], text, at);
}

template<class Text>
std::optional<size_t> LikePattern::stepOverClass(const CharClass& charClass, const Text& text, size_t at) const {
    const char32_t character = text.character(at);
    if (contains(charClass, character, withoutCase(character)) != charClass.negated) return text.behindCharacter(at);
    if (charClass.negated || at + 1 == text.size()) return {};
    // Two letters of the text are the one of the class that stands for both.
    for (const char32_t listed : charClass.characters) {
        const FoldedCharacter pair = foldCharacter(listed);
        if (pair.second && pair.first == text.folded(at) && pair.second == text.folded(at + 1)) return at + 2;
    }
    return {};
}

template<class Text>
size_t LikePattern::nextPlaceOf(char32_t letter, const Text& text, size_t from) {
    const size_t size = text.size();
    while (from < size && text.folded(from) != letter)
        ++from;
    return from;
}

// What stands between two runs takes the first place where it fits: any later one leaves less for the rest. So only
// the last run is ever widened.
template<class Text>
bool LikePattern::matchesLetters(const Text& text) const {
    size_t at = 0, runStart = 0;
    qsizetype element = 0, behindRun = -1;
    for (;;) {
        if (element < elements_.size() && elements_[element].kind == Element::Kind::AnyRun) {
            behindRun = ++element;
            if (behindRun == elements_.size()) return true;
            runStart = at;
            if (elements_[behindRun].kind == Element::Kind::Letter)
                at = runStart = nextPlaceOf(elements_[behindRun].letter, text, runStart);
            continue;
        }
        if (at == text.size()) return element == elements_.size();
        std::optional<size_t> next;
        if (element < elements_.size()) next = step(elements_[element], text, at);
        if (next) {
            at = *next;
            ++element;
        } else if (behindRun >= 0) {
            ++runStart;
            if (elements_[behindRun].kind == Element::Kind::Letter)
                runStart = nextPlaceOf(elements_[behindRun].letter, text, runStart);
            at = runStart;
            element = behindRun;
        } else {
            return false;
        }
    }
}

bool LikePattern::matches(QStringView text) const {
    if (broken_) return false;
    QString buffer;
    text = composed(text, buffer);
    Letters letters(text.size());
    for (qsizetype at = 0; at < text.size();)
        letters.add(takeCharacter(text, at));
    return matchesLetters(letters);
}

void LikePattern::noteBeginning() {
    qsizetype place = 0;
    for (; place < elements_.size(); ++place) {
        const Element& element = elements_[place];
        if (element.kind != Element::Kind::Letter || element.letter >= 0x80) break;
        beginning_.append(static_cast<char>(element.letter));
    }
    endsWithBeginning_ = place + 1 == elements_.size() && elements_[place].kind == Element::Kind::AnyRun;
}

// A character is compared only if the next one cannot be an accent on it.
LikePattern::Answer LikePattern::answerByBeginning(QByteArrayView text) const {
    constexpr uchar firstByteOfAccents = 0xCC;
    const auto* const bytes = reinterpret_cast<const uchar*>(text.data());
    const qsizetype size = text.size();
    for (qsizetype at = 0; at < beginning_.size(); ++at) {
        if (at == size) return Answer::No;
        if (bytes[at] >= 0x80 || (at + 1 < size && bytes[at + 1] >= firstByteOfAccents)) return Answer::Unsure;
        if (asciiFolded[bytes[at]] != beginning_.at(at)) return Answer::No;
    }
    return endsWithBeginning_ ? Answer::Yes : Answer::Unsure;
}

bool LikePattern::matchesUtf8(QByteArrayView text) const {
    if (broken_) return false;
    if (!beginning_.isEmpty())
        if (const Answer answer = answerByBeginning(text); answer != Answer::Unsure) return answer == Answer::Yes;
    if (isAscii(text)) return matchesLetters(AsciiLetters(text));
    Letters letters(text.size());
    for (qsizetype at = 0; at < text.size();) {
        const char32_t character = takeLatin(text, at);
        if (character >= firstCombining) return matches(QString::fromUtf8(text));
        letters.add(character);
    }
    return matchesLetters(letters);
}

bool matchesLike(QStringView text, QStringView pattern, BrokenPattern broken) {
    thread_local QString lastText;
    thread_local LikePattern last{u""};
    if (pattern != lastText) {
        last = LikePattern(pattern);
        lastText = pattern.toString();
    }
    if (last.isBroken() && broken == BrokenPattern::Raises) mkl::throwError(mkl::err::BadPattern);
    return last.matches(text);
}

} // namespace jet
