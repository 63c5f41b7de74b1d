#pragma once
// The pattern language of the operator Like: * any run, ? one character, # one digit, [abc], [a-z], [!a-z].
// Letters match without regard to case, ß matches ss (æ ae, œ oe), ranges follow the sort order.
#include <QList>
#include <QString>
#include <QStringView>
#include <optional>
#include <span>

namespace jet {

/// A pattern made ready for many texts. Time is at most text length times pattern length.
class LikePattern {
public:
    explicit LikePattern(QStringView pattern);

    /// A class that is not closed, or a range whose bounds descend. Such a pattern matches nothing.
    bool isBroken() const { return broken_; }
    bool matches(QStringView text) const;

private:
    struct Range {
        QString first, last;
    };
    struct CharClass {
        bool negated = false;
        QList<char32_t> characters; ///< folded
        QList<Range> ranges;
    };
    struct Element {
        enum class Kind : quint8 { Letter, AnyRun, AnyOne, Digit, Class };
        Kind kind;
        char32_t letter = 0;      ///< folded
        qsizetype classIndex = 0; ///< into classes_
    };
    /// A letter of the text; ß, æ and œ are two of them.
    struct Letter {
        char32_t folded;
        char32_t character; ///< before folding; 0 for a second half
        bool hasSecondHalf;
    };
    using Letters = std::span<const Letter>;

    qsizetype readClass(QStringView pattern, qsizetype at);
    static bool readClassItems(QStringView items, CharClass& charClass);
    void addLetters(char32_t character);
    std::optional<size_t> step(const Element& element, Letters letters, size_t at) const;
    static bool contains(const CharClass& charClass, char32_t character, char32_t folded);
    static size_t nextPlaceOf(char32_t letter, Letters letters, size_t from);
    bool matchesLetters(Letters letters) const;

    QList<Element> elements_;
    QList<CharClass> classes_;
    bool broken_ = false;
};

enum class BrokenPattern : quint8 { Raises, MatchesNothing };

/// Whether the text matches; a broken pattern raises 93 unless told otherwise. The thread keeps its last pattern ready.
bool matchesLike(QStringView text, QStringView pattern, BrokenPattern broken = BrokenPattern::Raises);

} // namespace jet
