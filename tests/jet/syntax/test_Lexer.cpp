#include "jet/syntax/Lexer.h"
#include "jet/syntax/Shape.h"

#include "support/Printing.h"

#include <QStringList>

using namespace jet;
using namespace Qt::StringLiterals;
using mkl::errorOf;
using mkl::Variant;

namespace {

QStringList tokensOf(QStringView text) {
    QStringList tokens;
    Lexer lexer(text);
    for (Token token = lexer.next(); token.kind != TokenKind::End; token = lexer.next())
        tokens.append(token.text.toString());
    return tokens;
}

Variant literalOf(QStringView text) {
    return literalValue(Lexer(text).next());
}

} // namespace

TEST(Lexer, CutsAtTheSmallestPieces) {
    EXPECT_EQ(tokensOf(u"a<=b<>c>=d"), QStringList({u"a"_s, u"<="_s, u"b"_s, u"<>"_s, u"c"_s, u">="_s, u"d"_s}));
    EXPECT_EQ(tokensOf(u"5--3"), QStringList({u"5"_s, u"-"_s, u"-"_s, u"3"_s}));
    EXPECT_EQ(tokensOf(u"[ARTIKEL/PREISE].[Order]"), QStringList({u"[ARTIKEL/PREISE]"_s, u"."_s, u"[Order]"_s}));
    EXPECT_EQ(tokensOf(u"T!Ä_1 \t\n*"), QStringList({u"T"_s, u"!"_s, u"Ä_1"_s, u"*"_s}));
    EXPECT_EQ(tokensOf(u"a&&HFFx"), QStringList({u"a"_s, u"&"_s, u"&HFF"_s, u"x"_s}));
    EXPECT_TRUE(tokensOf(u" ").isEmpty());
}

TEST(Lexer, NamesLoseBracketsAndBlanks) {
    Lexer lexer(u"[ Mein Feld ]");
    const Token token = lexer.next();
    EXPECT_EQ(nameOf(token).toString(), u"Mein Feld"_s);
}

TEST(Lexer, Numbers) {
    EXPECT_EQ(literalOf(u"17"), Variant(17));
    EXPECT_EQ(literalOf(u"2147483647"), Variant(2147483647));
    EXPECT_EQ(literalOf(u"2147483648"), Variant(2147483648.0));
    EXPECT_EQ(literalOf(u".5"), Variant(0.5));
    EXPECT_EQ(literalOf(u"1."), Variant(1.0));
    EXPECT_EQ(literalOf(u"1E3"), Variant(1000.0));
    EXPECT_EQ(literalOf(u"25e-1"), Variant(2.5));
    EXPECT_EQ(literalOf(u"&HFF"), Variant(255));
    EXPECT_EQ(literalOf(u"&hFFFFFFFF"), Variant(-1));
    EXPECT_EQ(errorOf([] { literalOf(u"&H100000000"); }), 3075);
    EXPECT_EQ(errorOf([] { literalOf(u"1E999"); }), 3075);
    EXPECT_EQ(tokensOf(u"1E"), QStringList({u"1"_s, u"E"_s}));
}

TEST(Lexer, Texts) {
    EXPECT_EQ(literalOf(u"'O''Neill'"), Variant(u"O'Neill"_s));
    EXPECT_EQ(literalOf(u"\"1\"\" Rohr\""), Variant(u"1\" Rohr"_s));
    EXPECT_EQ(literalOf(u"'a\"b\\'"), Variant(u"a\"b\\"_s));
    EXPECT_EQ(literalOf(u"''"), Variant(QString()));
    EXPECT_EQ(literalOf(u"'--!*'"), Variant(u"--!*"_s));
}

TEST(Lexer, Dates) {
    const Variant may = Variant::date(37012);
    EXPECT_EQ(literalOf(u"#5/1/2001#"), may);
    EXPECT_EQ(literalOf(u"#2001-05-01#"), may);
    EXPECT_EQ(literalOf(u"#5-1-01#"), may);
    EXPECT_EQ(literalOf(u"# 2001-5-1 #"), may);
    EXPECT_EQ(literalOf(u"#28/2/2002#"), literalOf(u"#2002-02-28#"));
    EXPECT_EQ(literalOf(u"#1/1/29#"), literalOf(u"#2029-01-01#"));
    EXPECT_EQ(literalOf(u"#1/1/30#"), literalOf(u"#1930-01-01#"));
    EXPECT_EQ(literalOf(u"#5/1/2001 6:00 PM#"), Variant::date(37012.75));
    EXPECT_EQ(literalOf(u"#2001-05-01 12:00:00#"), Variant::date(37012.5));
    EXPECT_EQ(literalOf(u"#18:00#"), Variant::date(0.75));
    for (const QStringView wrong : {u"#WGFILTER#", u"#31/4/2001#", u"#2001-02-30#", u"#13/13/2001#", u"##", u"#5/1#",
                                    u"#5/1/2001 25:00#", u"#5/1/2001x#", u"#13:00 PM#", u"#5/1-2001#"})
        EXPECT_EQ(errorOf([&] { literalOf(wrong); }), 3075) << wrong.toString().toStdString();
}

TEST(Lexer, WhatIsNoToken) {
    for (const QStringView wrong :
         {u"'abc", u"\"abc", u"#5/1/2001", u"a ? b", u"{a}", u"a | b", u"a%", u"@x", u"`a`", u"a:b", u"a~b", u"a $ b"})
        EXPECT_EQ(errorOf([&] { tokensOf(wrong); }), 3075) << wrong.toString().toStdString();
    for (const QStringView wrong : {u"[abc", u"[]", u"[ ]", u"[a[b]", u"[a!b]", u"[a`b]"})
        EXPECT_EQ(errorOf([&] { tokensOf(wrong); }), 3126) << wrong.toString().toStdString();
    EXPECT_EQ(errorOf([] { tokensOf(u"[a"_s + QString(QChar(u'\0')) + u"b]"_s); }), 3126);
    EXPECT_EQ(errorOf([] { tokensOf(QString(QChar(u'\0'))); }), 3075);
    EXPECT_EQ(errorOf([] { tokensOf(QString(maximalLength + 1, u' ')); }), 3360);
    EXPECT_EQ(errorOf([] { tokensOf(QString(maximalLength, u' ')); }), 0);
}

TEST(Lexer, TheMessageNamesThePlace) {
    try {
        tokensOf(u"a = 'offen");
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_TRUE(error.description().contains(u"'offen"_s));
    }
}

TEST(Shape, LiteralsAreTakenOut) {
    const Shape a = shapeOf(u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent]=17 ORDER BY [Order];");
    const Shape b = shapeOf(u"SELECT  *  FROM [ARTIKEL/KATEGORIEN] WHERE [Parent] = 4711 ORDER BY [Order] ;");
    EXPECT_EQ(a.key, b.key);
    ASSERT_EQ(a.literals.size(), 1);
    EXPECT_EQ(a.literals[0], Variant(17));
    EXPECT_EQ(b.literals[0], Variant(4711));
}

TEST(Shape, TypesAndTokensTellStatementsApart) {
    const QStringList texts = {
        u"a=1"_s,  u"a=1.5"_s, u"a='1'"_s, u"a=#2001-01-01#"_s, u"a<1"_s,   u"a<=1"_s, u"a< =1"_s, u"[a]=1"_s,
        u"a=-1"_s, u"a 1"_s,   u"a1"_s,    u"[a 1]"_s,          u"a=1 1"_s, u"A=1"_s,  u"a.b=1"_s, u"[a.b]=1"_s,
        u"a=11 "_s};
    QStringList keys;
    for (const QString& text : texts)
        keys.append(shapeOf(text).key);
    EXPECT_EQ(keys.last(), keys.first());
    keys.removeLast();
    EXPECT_EQ(keys.removeDuplicates(), 0);
}

TEST(Shape, LiteralsComeInOrder) {
    const Shape shape = shapeOf(u"x In (1, 'zwei', 3.5) And d=#2001-05-01#");
    ASSERT_EQ(shape.literals.size(), 4);
    EXPECT_EQ(shape.literals[1], Variant(u"zwei"_s));
    EXPECT_EQ(shape.literals[3], Variant::date(37012));
}

TEST(Shape, RefusesWhatIsNoToken) {
    EXPECT_EQ(errorOf([] { shapeOf(u"a = 'offen"); }), 3075);
    EXPECT_EQ(errorOf([] { shapeOf(u"[offen"); }), 3126);
    EXPECT_EQ(errorOf([] { shapeOf(QString(maximalLength + 1, u'a')); }), 3360);
}
