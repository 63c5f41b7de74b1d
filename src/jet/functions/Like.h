#pragma once
// The pattern language of the operator Like: * any run, ? one character, # one digit, [abc], [a-z], [!a-z].
// Letters match without regard to case, ß matches ss (æ ae, œ oe), ranges follow the sort order.
#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringView>
#include <optional>

namespace jet {

/// A pattern made ready for many texts. Time is at most text length times pattern length.
class LikePattern {
public:
    explicit LikePattern(QStringView pattern);

    /// A class that is not closed, or a range whose bounds descend. Such a pattern matches nothing.
    bool isBroken() const { return broken_; }
    bool matches(QStringView text) const;
    /// The same for UTF-8, as engines hold texts; faster where the text is Latin.
    bool matchesUtf8(QByteArrayView text) const;

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
    class Letters;
    class AsciiLetters;
    enum class Answer : quint8 { No, Yes, Unsure };

    qsizetype readClass(QStringView pattern, qsizetype at);
    static bool readClassItems(QStringView items, CharClass& charClass);
    void addLetters(char32_t character);
    void noteBeginning();
    Answer answerByBeginning(QByteArrayView text) const;
    template<class Text>
    std::optional<size_t> step(const Element& element, const Text& text, size_t at) const;
    template<class Text>
    std::optional<size_t> stepOverClass(const CharClass& charClass, const Text& text, size_t at) const;
    static bool contains(const CharClass& charClass, char32_t character, char32_t folded);
    template<class Text>
    static size_t nextPlaceOf(char32_t letter, const Text& text, size_t from);
    template<class Text>
    bool matchesLetters(const Text& text) const;

    QList<Element> elements_;
    QList<CharClass> classes_;
    QByteArray beginning_;           ///< its first letters as far as they are ASCII
    bool endsWithBeginning_ = false; ///< behind them is any run and nothing more
    bool broken_ = false;
};

enum class BrokenPattern : quint8 { Raises, MatchesNothing };

/// Whether the text matches; a broken pattern raises 93 unless told otherwise. The thread keeps its last pattern ready.
bool matchesLike(QStringView text, QStringView pattern, BrokenPattern broken = BrokenPattern::Raises);

} // namespace jet
