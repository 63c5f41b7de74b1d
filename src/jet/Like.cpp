#include "jet/Like.h"

#include "base/RunTimeError.h"
#include "jet/Collation.h"
#include "jet/Letters.h"

#include <QVarLengthArray>

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

// The place behind what the element takes from the text there, or nothing.
std::optional<size_t> LikePattern::step(const Element& element, Letters letters, size_t at) const {
    const Letter& letter = letters[at];
    const size_t behindCharacter = at + (letter.hasSecondHalf ? 2 : 1);
    switch (element.kind) {
    case Element::Kind::AnyRun: return {};
    case Element::Kind::AnyOne: return behindCharacter;
    case Element::Kind::Letter: return letter.folded == element.letter ? std::optional(at + 1) : std::nullopt;
    case Element::Kind::Digit:
        return letter.folded >= U'0' && letter.folded <= U'9' ? std::optional(at + 1) : std::nullopt;
    case Element::Kind::Class: break;
    }
    const CharClass& charClass = classes_[element.classIndex];
    const char32_t character = letter.character ? letter.character : letter.folded;
    if (contains(charClass, character, withoutCase(character)) != charClass.negated) return behindCharacter;
    if (charClass.negated || at + 1 == letters.size()) return {};
    // Two letters of the text are the one of the class that stands for both.
    for (const char32_t listed : charClass.characters) {
        const FoldedCharacter pair = foldCharacter(listed);
        if (pair.second && pair.first == letter.folded && pair.second == letters[at + 1].folded) return at + 2;
    }
    return {};
}

size_t LikePattern::nextPlaceOf(char32_t letter, Letters letters, size_t from) {
    while (from < letters.size() && letters[from].folded != letter)
        ++from;
    return from;
}

// What stands between two runs takes the first place where it fits: any later one leaves less for the rest. So only
// the last run is ever widened.
bool LikePattern::matchesLetters(Letters letters) const {
    size_t at = 0, runStart = 0;
    qsizetype element = 0, behindRun = -1;
    for (;;) {
        if (element < elements_.size() && elements_[element].kind == Element::Kind::AnyRun) {
            behindRun = ++element;
            if (behindRun == elements_.size()) return true;
            runStart = at;
            continue;
        }
        if (at == letters.size()) return element == elements_.size();
        std::optional<size_t> next;
        if (element < elements_.size()) next = step(elements_[element], letters, at);
        if (next) {
            at = *next;
            ++element;
        } else if (behindRun >= 0) {
            ++runStart;
            if (elements_[behindRun].kind == Element::Kind::Letter)
                runStart = nextPlaceOf(elements_[behindRun].letter, letters, runStart);
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
    QVarLengthArray<Letter, 256> letters(text.size() * 2); // no character is more than two letters
    size_t count = 0;
    for (qsizetype at = 0; at < text.size();) {
        const char32_t character = takeCharacter(text, at);
        const FoldedCharacter folded = foldCharacter(character);
        letters[static_cast<qsizetype>(count++)] = {folded.first, character, folded.second != 0};
        if (folded.second) letters[static_cast<qsizetype>(count++)] = {folded.second, 0, false};
    }
    return matchesLetters({letters.data(), count});
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
