#include "jet/functions/Like.h"
#include "support/Printing.h"

#include <QElapsedTimer>
#include <random>

using namespace Qt::StringLiterals;
using jet::BrokenPattern;
using jet::LikePattern;
using jet::matchesLike;

namespace {

struct Case {
    QString text, pattern;
    bool matches;
};

// The rules told once more, as slowly as can be: ASCII letters only, classes of the forms [xy], [x-y], [!x].
bool reference(QStringView text, QStringView pattern) {
    if (pattern.isEmpty()) return text.isEmpty();
    const QChar p = pattern[0];
    if (p == u'*') return reference(text, pattern.sliced(1)) || (!text.isEmpty() && reference(text.sliced(1), pattern));
    if (p != u'[') {
        if (text.isEmpty()) return false;
        const QChar t = text[0].toLower();
        const bool fits = p == u'?' || (p == u'#' && t.isDigit()) || (p != u'#' && p.toLower() == t);
        return fits && reference(text.sliced(1), pattern.sliced(1));
    }
    const qsizetype end = pattern.indexOf(u']');
    QStringView items = pattern.sliced(1, end - 1);
    if (text.isEmpty()) return false;
    const QChar t = text[0].toLower();
    const bool negated = items.startsWith(u'!');
    if (negated) items = items.sliced(1);
    const bool isRange = items.size() == 3 && items[1] == u'-';
    const bool inside =
        isRange ? t >= items[0].toLower() && t <= items[2].toLower() : items.contains(t, Qt::CaseInsensitive);
    return inside != negated && reference(text.sliced(1), pattern.sliced(end + 1));
}

} // namespace

TEST(Like, wildcardsAndClasses) {
    const Case cases[] = {
        {u"Schraube"_s, u"s*"_s, true},
        {u"Schraube"_s, u"*E"_s, true},
        {u"Schraube"_s, u"*x*"_s, false},
        {u"Schraube"_s, u"Schraub?"_s, true},
        {u"Schraube"_s, u"Schraube?"_s, false},
        {u""_s, u""_s, true},
        {u""_s, u"*"_s, true},
        {u""_s, u"?"_s, false},
        {u"a"_s, u""_s, false},
        {u"M8"_s, u"M#"_s, true},
        {u"Mx"_s, u"M#"_s, false},
        {u"M\u0663"_s, u"M#"_s, false}, // digits of another script are none
        {u"a"_s, u"[abc]"_s, true},
        {u"d"_s, u"[abc]"_s, false},
        {u"d"_s, u"[!abc]"_s, true},
        {u""_s, u"[!abc]"_s, false},
        {u"B"_s, u"[a-c]"_s, true},
        {u"ä"_s, u"[a-z]"_s, true},
        {u"Ä"_s, u"[A-Z]"_s, true},
        {u"ß"_s, u"[a-z]"_s, true},
        {u"ж"_s, u"[a-z]"_s, false},
        {u"ä"_s, u"[a]"_s, false},
        {u"ä"_s, u"a"_s, false},
        {u"5"_s, u"[a-z]"_s, false},
        {u"100%"_s, u"100%"_s, true},
        {u"100x"_s, u"100%"_s, false},
        {u"a_b"_s, u"a_b"_s, true},
        {u"axb"_s, u"a_b"_s, false},
        {u"*"_s, u"[*]"_s, true},
        {u"x"_s, u"[*]"_s, false},
        {u"a?b#c[d"_s, u"a[?]b[#]c[[]d"_s, true},
        {u"]"_s, u"]"_s, true},
        {u"a-"_s, u"a[-x]"_s, true},
        {u"ax"_s, u"a[x-]"_s, true},
        {u"a-"_s, u"a[x-]"_s, true},
        {u"-"_s, u"[a-c-e]"_s, true},
        {u"d"_s, u"[a-c-e]"_s, false},
        {u"!"_s, u"!"_s, true},
        {u"!"_s, u"[!]"_s, true},
        {u"a"_s, u"[!]"_s, false},
        {u"!"_s, u"[a!]"_s, true},
        {u"ab"_s, u"a[]b"_s, true},
        {u"axb"_s, u"a[]b"_s, false},
        {u"öl"_s, u"ÖL"_s, true},
        {u"Öl"_s, u"Ö*"_s, true},
        {u"abc "_s, u"abc"_s, false},
        {u"a\0b"_s, u"a?b"_s, true},
        {u"co-op"_s, u"coop"_s, false},
        {u"\U0001F529x"_s, u"?x"_s, true},
        {u"Mu\u0308ller"_s, u"m?ller"_s, true},
        {u"Müller"_s, u"mu\u0308*"_s, true},
        {u"line\r\nbreak"_s, u"line*break"_s, true},
    };
    for (const Case& c : cases)
        EXPECT_EQ(matchesLike(c.text, c.pattern), c.matches)
            << c.text.toStdString() << " Like " << c.pattern.toStdString();
}

TEST(Like, oneLetterForTwo) {
    const Case cases[] = {
        {u"Straße"_s, u"STRASSE"_s, true},  {u"Strasse"_s, u"straße"_s, true},
        {u"Straße"_s, u"Stra?e"_s, true},   {u"Strasse"_s, u"Stra?e"_s, false},
        {u"Straße"_s, u"*se"_s, true},      {u"Strasse"_s, u"Stra[ß]e"_s, true},
        {u"Straße"_s, u"Stra[ß]e"_s, true}, {u"Straße"_s, u"Stra[!ß]e"_s, false},
        {u"Straße"_s, u"Strase"_s, false},  {u"ß"_s, u"s"_s, false},
        {u"æther"_s, u"AE*"_s, true},       {u"Oeuvre"_s, u"œ*"_s, true},
        {u"s"_s, u"[ß]"_s, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(matchesLike(c.text, c.pattern), c.matches)
            << c.text.toStdString() << " Like " << c.pattern.toStdString();
}

TEST(Like, brokenPatterns) {
    for (const QString& pattern : {u"[a"_s, u"a["_s, u"[z-a]"_s, u"x[!9-0]"_s, u"*["_s}) {
        EXPECT_TRUE(LikePattern(pattern).isBroken()) << pattern.toStdString();
        EXPECT_EQ(mkl::errorOf([&] { matchesLike(u"a", pattern); }), mkl::err::BadPattern) << pattern.toStdString();
        EXPECT_FALSE(matchesLike(u"a", pattern, BrokenPattern::MatchesNothing)) << pattern.toStdString();
    }
    EXPECT_FALSE(LikePattern(u"[A-a]").isBroken());
}

TEST(Like, agreesWithTheSlowRules) {
    const QStringList pieces{u"a"_s, u"B"_s,    u"1"_s,    u"*"_s,     u"?"_s,
                             u"#"_s, u"[ab]"_s, u"[!a]"_s, u"[a-b]"_s, u"[0-1]"_s};
    const QString letters = u"aAb10"_s;
    std::mt19937 random(19971231);
    const auto below = [&](qsizetype limit) { return static_cast<qsizetype>(random() % static_cast<size_t>(limit)); };
    int matched = 0;
    for (int round = 0; round < 30000; ++round) {
        QString text, pattern;
        for (qsizetype length = below(8); length > 0; --length)
            text += letters[below(letters.size())];
        for (qsizetype length = below(7); length > 0; --length)
            pattern += pieces[below(pieces.size())];
        const bool expected = reference(text, pattern);
        matched += expected;
        ASSERT_EQ(matchesLike(text, pattern), expected) << text.toStdString() << " Like " << pattern.toStdString();
    }
    EXPECT_GT(matched, 2000); // both answers occur often
}

TEST(Like, bytesAgreeWithCharacters) {
    const QStringList letters{u"a"_s, u"A"_s, u"b"_s,      u"s"_s, u"S"_s,      u"ß"_s,          u"ä"_s,      u"Ä"_s,
                              u"æ"_s, u"e"_s, u"\u0308"_s, u"1"_s, u"\u00ff"_s, u"\U0001F600"_s, u"\u212A"_s, u"k"_s};
    const QStringList wildcards{u"*"_s, u"*"_s, u"?"_s, u"#"_s, u"[a-s]"_s, u"[!a]"_s, u"[ß]"_s, u"[æe]"_s};
    const quint64 seed = qEnvironmentVariableIsSet("MKL_SEED") ? qEnvironmentVariable("MKL_SEED").toULongLong() : 815;
    const int rounds = qEnvironmentVariableIsSet("MKL_FULL") ? 3'000'000 : 40'000;
    std::mt19937_64 random(seed);
    const auto oneOf = [&](const QStringList& list, qsizetype from) {
        return list[from + static_cast<qsizetype>(random() % static_cast<size_t>(list.size() - from))];
    };
    int matched = 0;
    for (int round = 0; round < rounds; ++round) {
        const qsizetype from = round % 2 ? 0 : letters.size() / 2;
        QString text, pattern;
        for (auto length = random() % 7; length > 0; --length)
            text += oneOf(letters, from);
        for (auto length = random() % 6; length > 0; --length)
            pattern += random() % 3 ? oneOf(letters, from) : oneOf(wildcards, 0);
        const LikePattern ready(pattern);
        matched += ready.matches(text);
        ASSERT_EQ(ready.matchesUtf8(text.toUtf8()), ready.matches(text))
            << "seed " << seed << ": '" << text.toStdString() << "' Like '" << pattern.toStdString() << "'";
    }
    EXPECT_GT(matched, rounds / 100);
    EXPECT_FALSE(LikePattern(u"a*").matchesUtf8("\xff")); // no text at all
    EXPECT_TRUE(LikePattern(u"?").matchesUtf8("\xff"));
    EXPECT_FALSE(LikePattern(u"a[").matchesUtf8("a["));
}

TEST(Like, manyRunsAnswerAtOnce) {
    const QString text(20000, u'y');
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(matchesLike(text, u"*x"_s.repeated(40)));
    EXPECT_FALSE(matchesLike(text, u"*y"_s.repeated(40) + u'x'));
    EXPECT_TRUE(matchesLike(text, u"*y"_s.repeated(40)));
    EXPECT_FALSE(matchesLike(text, u"*"_s + u"y"_s.repeated(40) + u'x'));
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST(Like, patternsMayAlternate) {
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(matchesLike(u"abc", u"a*"));
        EXPECT_FALSE(matchesLike(u"abc", u"b*"));
    }
}
