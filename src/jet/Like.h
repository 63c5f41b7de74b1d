#pragma once
// The pattern language of the operator Like: * any run, ? one character, # one digit, [abc], [a-z], [!a-z].
// Letters match without regard to case, ß matches ss (æ ae, œ oe), ranges follow the sort order.
#include <QList>
#include <QString>
#include <QStringView>

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
    struct Element {
        enum class Kind : quint8 { Letter, AnyRun, AnyOne, Digit, Class };
        Kind kind;
        char32_t letter = 0;     ///< folded
        qsizetype charClass = 0; ///< index into classes_
    };
    struct CharClass {
        bool negated = false;
        QList<char32_t> letters; ///< folded
        QList<Range> ranges;
    };

    QList<Element> elements_;
    QList<CharClass> classes_;
    bool broken_ = false;
};

enum class BrokenPattern : quint8 { Raises, MatchesNothing };

/// Whether the text matches; a broken pattern raises 93 unless told otherwise. The last pattern of the thread stays
/// ready.
bool matchesLike(QStringView text, QStringView pattern, BrokenPattern broken = BrokenPattern::Raises);

} // namespace jet
