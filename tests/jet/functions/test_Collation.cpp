#include "jet/functions/Collation.h"
#include "support/Printing.h"

#include <QStringList>
#include <random>

using namespace Qt::StringLiterals;
using jet::compare;
using jet::compareUtf8;
using jet::sortKey;

namespace {

int sign(qsizetype order) {
    return order < 0 ? -1 : order > 0;
}

// The three ways to compare must agree.
int order(const QString& a, const QString& b) {
    const int result = sign(compare(a, b));
    EXPECT_EQ(result, sign(sortKey(a).compare(sortKey(b)))) << a.toStdString() << " / " << b.toStdString();
    EXPECT_EQ(result, sign(compareUtf8(a.toStdString(), b.toStdString())))
        << a.toStdString() << " / " << b.toStdString();
    return result;
}

struct Pair {
    QString a, b;
};

} // namespace

TEST(Collation, dictionaryOrder) {
    const QStringList words{u"_x"_s,       u"10"_s,   u"9"_s,     u"Ähre"_s,    u"apfel"_s,    u"Äpfel"_s,
                            u"co op"_s,    u"coop"_s, u"co-op"_s, u"Mueller"_s, u"Muller"_s,   u"Müller"_s,
                            u"Mullerei"_s, u"Ofen"_s, u"Öfen"_s,  u"Straße"_s,  u"Strassen"_s, u"Zebra"_s};
    for (qsizetype i = 0; i < words.size(); ++i)
        for (qsizetype k = 0; k < words.size(); ++k)
            EXPECT_EQ(order(words[i], words[k]), sign(i - k))
                << words[i].toStdString() << " / " << words[k].toStdString();
}

TEST(Collation, textsThatAreTheSame) {
    const Pair pairs[] = {
        {u"apfel"_s, u"Apfel"_s},         {u"Öfen"_s, u"öfen"_s},
        {u"Straße"_s, u"STRASSE"_s},      {u"STRAẞE"_s, u"strasse"_s},
        {u"Æther"_s, u"aether"_s},        {u"œuvre"_s, u"Oeuvre"_s},
        {u"abc  "_s, u"ABC"_s},           {u""_s, u"   "_s},
        {u"Mu\u0308ller"_s, u"Müller"_s}, {u"\u212Bngström"_s, u"ångström"_s},
        {u"ΣΊΣΥΦΟΣ"_s, u"σίσυφος"_s},     {u"ЖУК"_s, u"жук"_s},
        {u"Łódź"_s, u"łÓDŹ"_s},           {u"co-OP"_s, u"CO-op "_s},
    };
    for (const auto& [a, b] : pairs)
        EXPECT_EQ(order(a, b), 0) << a.toStdString() << " / " << b.toStdString();
}

TEST(Collation, textsInAscendingOrder) {
    const Pair pairs[] = {
        {u"a"_s, u"ä"_s},          {u"ä"_s, u"b"_s},
        {u"c-oop"_s, u"co-op"_s},  {u"'n"_s, u"-n"_s},
        {u"n"_s, u"'n"_s},         {u"Mull-er"_s, u"Müller"_s}, // an accent weighs more than a hyphen
        {u" a"_s, u"_a"_s},        {u"_a"_s, u"1a"_s},
        {u"1a"_s, u"aa"_s},        {u"a"_s, u"a\0b"_s},
        {u"a\0b"_s, u"ab"_s},      {u"a\x01"_s, u"a\x02"_s},
        {u"z"_s, u"ж"_s},          {u"ж"_s, u"з"_s},
        {u"a€b"_s, u"ab"_s},       {u"resumé"_s, u"résume"_s},
        {u"o"_s, u"ø"_s},          {u"øa"_s, u"ob"_s},
        {u"ł"_s, u"m"_s},          {u"a "_s, u"a b"_s},
        {u""_s, u"-"_s},           {u"!"_s, u"+"_s},
        {u"+"_s, u"0"_s},          {u"9"_s, u"²"_s},
        {u"²"_s, u"a"_s},          {u"\u00A0a"_s, u"!a"_s},
        {u"a"_s, u"\U0001D4D0"_s}, {u"é"_s, u"\u1EBF"_s}, // one accent before two
    };
    for (const auto& [a, b] : pairs) {
        EXPECT_EQ(order(a, b), -1) << a.toStdString() << " / " << b.toStdString();
        EXPECT_EQ(order(b, a), 1) << b.toStdString() << " / " << a.toStdString();
    }
}

// Few letters make many near ties.
TEST(Collation, waysAgreeAndTheOrderIsTransitive) {
    const QStringList alphabet{u"a"_s, u"A"_s,      u"ä"_s, u"s"_s,      u"ß"_s,    u"æ"_s,
                               u"-"_s, u"'"_s,      u" "_s, u"_"_s,      u"1"_s,    u"ж"_s,
                               u"ø"_s, u"\u0308"_s, u"€"_s, u"\u2011"_s, u"\x01"_s, u"\u1EBF"_s};
    std::mt19937 random(20250521);
    const auto word = [&] {
        QString text;
        for (auto length = random() % 6; length > 0; --length)
            text += alphabet[static_cast<qsizetype>(random() % static_cast<size_t>(alphabet.size()))];
        return text;
    };
    for (int round = 0; round < 20000; ++round) {
        const QString a = word(), b = word(), c = word();
        const int ab = order(a, b), bc = order(b, c);
        ASSERT_EQ(ab, -order(b, a)) << a.toStdString() << " / " << b.toStdString();
        if (ab == bc) {
            ASSERT_EQ(order(a, c), ab);
        }
        if (HasFailure()) return;
    }
}

// The ways without keys against the keys, over texts full of what they must leave to each other.
TEST(Collation, fastWaysAgreeWithTheKeys) {
    const QStringList alphabet{u"a"_s, u"A"_s,      u"b"_s,          u"Z"_s,      u"ä"_s, u"s"_s,      u"ß"_s,
                               u"Æ"_s, u"-"_s,      u"'"_s,          u"\u00AD"_s, u" "_s, u"  "_s,     u"_"_s,
                               u"."_s, u"9"_s,      u"0"_s,          u"ж"_s,      u"ø"_s, u"\u0308"_s, u"\u0338"_s,
                               u"€"_s, u"\x01"_s,   u"é"_s,          u"["_s,      u"~"_s, u"ſ"_s,      u"\u212A"_s,
                               u"Ⅷ"_s, u"\u3042"_s, u"\U0001F600"_s, u"\u1EBF"_s};
    const quint64 seed = qEnvironmentVariableIsSet("MKL_SEED") ? qEnvironmentVariable("MKL_SEED").toULongLong() : 4711;
    const int rounds = qEnvironmentVariableIsSet("MKL_FULL") ? 5'000'000 : 50'000;
    std::mt19937_64 random(seed);
    const auto below = [&](qsizetype limit) { return static_cast<qsizetype>(random() % static_cast<size_t>(limit)); };
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    for (int round = 0; round < rounds; ++round) {
        // A small part of the alphabet at a time, and often a common beginning: many near ties.
        const qsizetype first = below(alphabet.size() - 4), width = round % 2 ? alphabet.size() - first : 5;
        const auto word = [&](QString text) {
            for (qsizetype length = below(5); length > 0; --length)
                text += alphabet[first + below(width)];
            return text;
        };
        const QString beginning = word({}), a = word(beginning), b = word(beginning);
        const int expected = sign(jet::sortKey(a).compare(jet::sortKey(b)));
        const QByteArray a8 = a.toUtf8(), b8 = b.toUtf8();
        ASSERT_EQ(sign(jet::compare(a, b)), expected)
            << "seed " << seed << ": '" << a.toStdString() << "' '" << b.toStdString() << "'";
        ASSERT_EQ(sign(jet::compareUtf8(a8.toStdString(), b8.toStdString())), expected)
            << "seed " << seed << ": '" << a.toStdString() << "' '" << b.toStdString() << "'";
    }
}

TEST(Collation, caseNeverCounts) {
    for (char32_t c = 0x20; c < 0xD7FF; ++c) {
        if (QChar::category(c) == QChar::Mark_NonSpacing) continue; // an accent, though one of them folds to a letter
        const QString a = QString::fromUcs4(&c, 1);
        const char32_t folded = QChar::toCaseFolded(c);
        const QString b = QString::fromUcs4(&folded, 1);
        ASSERT_EQ(compare(a, b), 0) << "U+" << std::hex << static_cast<unsigned>(c);
        ASSERT_EQ(order(u"x"_s + a, u"x"_s + b), 0) << "U+" << std::hex << static_cast<unsigned>(c);
    }
}

TEST(Collation, malformedTextsHaveTheirPlace) {
    const QString lone(QChar(0xD800));
    EXPECT_NE(sign(compare(lone, u"a"_s)), 0);
    EXPECT_EQ(compare(lone, lone), 0);
    EXPECT_NE(compareUtf8("a\xC3", "a"), 0);
    EXPECT_NE(compareUtf8("\xFF", "a"), 0);
    EXPECT_EQ(compareUtf8("", "  "), 0);
}

TEST(Collation, keysOfPlainWordsAreShort) {
    EXPECT_EQ(sortKey(u"Schraube"_s).size(), 8);
    EXPECT_EQ(sortKey(u""_s), QByteArray());
}
