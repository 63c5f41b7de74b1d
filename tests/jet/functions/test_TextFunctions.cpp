#include "jet/FunctionCall.h"

using namespace Qt::StringLiterals;
using namespace values;
using mkl::Variant;

TEST(TextFunctions, leftRightMidLen) {
    checkResults({
        {u"Left", {t(u"Schraube"), n(3)}, t(u"Sch")},
        {u"Left", {t(u"ab"), n(9)}, t(u"ab")},
        {u"Left", {t(u"ab"), n(0)}, t(u"")},
        {u"Left", {n(1234), n(2)}, t(u"12")},
        {u"Left", {t(u"abc"), 1.5}, t(u"ab")}, // halves to the even number
        {u"Left", {null, n(-1)}, null},
        {u"Left", {t(u"abc"), null}, null},
        {u"Right", {t(u"Schraube"), n(3)}, t(u"ube")},
        {u"Right", {n(123), n(1)}, t(u"3")},
        {u"Right", {Variant::date(37000), n(4)}, t(u"2001")},
        {u"Mid", {t(u"Schraube"), n(4), n(2)}, t(u"ra")},
        {u"Mid", {t(u"Schraube"), n(4)}, t(u"raube")},
        {u"Mid", {t(u"ab"), n(5)}, t(u"")},
        {u"Mid", {t(u"ab"), n(2), n(0)}, t(u"")},
        {u"Mid", {t(u"ab"), n(3), n(2)}, t(u"")},
        {u"Len", {t(u"Öl")}, n(2)},
        {u"Len", {n(-123)}, n(4)},
        {u"Len", {2.5}, n(3)},
        {u"Len", {t(u"")}, n(0)},
    });
    checkErrors({
        {u"Left", {t(u"x"), n(-1)}, 5},
        {u"Right", {t(u"x"), n(-1)}, 5},
        {u"Mid", {t(u"x"), n(0)}, 5},
        {u"Mid", {t(u"x"), n(1), n(-1)}, 5},
        {u"Left", {t(u"x"), t(u"y")}, 13},
        {u"Left", {t(u"x"), 3e9}, 6},
    });
}

TEST(TextFunctions, caseAndBlanks) {
    checkResults({
        {u"LCase", {t(u"ÄÖÜ Straße")}, t(u"äöü straße")},
        {u"UCase", {t(u"äöü straße")}, t(u"ÄÖÜ STRAßE")}, // as long as before
        {u"LCase", {n(5)}, t(u"5")},
        {u"Trim", {t(u"  a b  ")}, t(u"a b")},
        {u"LTrim", {t(u"  a ")}, t(u"a ")},
        {u"RTrim", {t(u" a  ")}, t(u" a")},
        {u"Trim", {t(u"\ta ")}, t(u"\ta")},
        {u"Trim", {t(u"   ")}, t(u"")},
        {u"Space", {n(3)}, t(u"   ")},
        {u"Space", {n(0)}, t(u"")},
        {u"String", {n(3), t(u"ab")}, t(u"aaa")},
        {u"String", {n(2), n(65)}, t(u"AA")},
        {u"String", {n(2), n(321)}, t(u"AA")},
        {u"StrReverse", {t(u"abc")}, t(u"cba")},
        {u"StrReverse", {t(u"a\U0001F529")}, t(u"\U0001F529a")},
    });
    checkErrors({
        {u"Space", {n(-1)}, 5},
        {u"Space", {n(2000000000)}, 6},
        {u"String", {n(-1), t(u"a")}, 5},
        {u"String", {n(2), t(u"")}, 5},
        {u"String", {n(2000000000), t(u"a")}, 6},
    });
}

TEST(TextFunctions, characterCodes) {
    checkResults({
        {u"Asc", {t(u"A")}, n(65)},
        {u"Asc", {t(u"Äx")}, n(196)},
        {u"Asc", {t(u"€")}, n(128)},
        {u"Asc", {t(u"ж")}, n(63)},
        {u"Chr", {n(65)}, t(u"A")},
        {u"Chr", {n(128)}, t(u"€")},
        {u"Chr", {n(159)}, t(u"Ÿ")},
        {u"Chr", {n(228)}, t(u"ä")},
        {u"Chr", {n(0)}, QString(QChar(u'\0'))},
    });
    checkErrors({{u"Asc", {t(u"")}, 5}, {u"Chr", {n(256)}, 5}, {u"Chr", {n(-1)}, 5}});
    for (mkl::Long code = 0; code < 256; ++code)
        EXPECT_EQ(call(u"Asc", {call(u"Chr", {code})}), n(code));
}

TEST(TextFunctions, search) {
    checkResults({
        {u"InStr", {t(u"Schraube"), t(u"RAU")}, n(4)},
        {u"InStr", {t(u"Schraube"), t(u"x")}, n(0)},
        {u"InStr", {n(3), t(u"abcabc"), t(u"a")}, n(4)},
        {u"InStr", {n(1), t(u"abcABC"), t(u"A"), n(0)}, n(4)},
        {u"InStr", {n(1), t(u"abcABC"), t(u"A"), n(1)}, n(1)},
        {u"InStr", {t(u"öl ÖL"), t(u"ÖL")}, n(1)},
        {u"InStr", {t(u"abc"), t(u"")}, n(1)},
        {u"InStr", {t(u""), t(u"")}, n(0)},
        {u"InStr", {n(9), t(u"abc"), t(u"a")}, n(0)},
        {u"InStr", {n(2), t(u"abc"), t(u"")}, n(2)},
        {u"InStr", {n(12345), n(3)}, n(3)},
        {u"InStr", {null, t(u"a")}, null},
        {u"InStrRev", {t(u"abcabc"), t(u"B")}, n(5)},
        {u"InStrRev", {t(u"abcabc"), t(u"b"), n(4)}, n(2)},
        {u"InStrRev", {t(u"abcabc"), t(u"bc"), n(5)}, n(2)},
        {u"InStrRev", {t(u"abcabc"), t(u"x")}, n(0)},
        {u"InStrRev", {t(u"abc"), t(u"")}, n(3)},
        {u"InStrRev", {t(u""), t(u"a")}, n(0)},
        {u"InStrRev", {t(u"abc"), t(u"a"), n(9)}, n(0)},
        {u"InStrRev", {t(u"aA"), t(u"a"), n(-1), n(0)}, n(1)},
    });
    checkErrors({
        {u"InStr", {n(0), t(u"a"), t(u"a")}, 5},
        {u"InStr", {n(1), t(u"a"), t(u"a"), n(3)}, 5},
        {u"InStrRev", {t(u"a"), t(u"a"), n(0)}, 5},
        {u"InStrRev", {t(u"a"), t(u"a"), n(-2)}, 5},
    });
}

TEST(TextFunctions, replace) {
    checkResults({
        {u"Replace", {t(u"aXbx"), t(u"x"), t(u"--")}, t(u"a--b--")},
        {u"Replace", {t(u"aXbx"), t(u"x"), t(u"-"), n(1), n(-1), n(0)}, t(u"aXb-")},
        {u"Replace", {t(u"xxx"), t(u"x"), t(u"y"), n(1), n(2)}, t(u"yyx")},
        {u"Replace", {t(u"xxx"), t(u"x"), t(u"y"), n(2)}, t(u"yy")},
        {u"Replace", {t(u"abc"), t(u""), t(u"y")}, t(u"abc")},
        {u"Replace", {t(u"abc"), t(u"b"), t(u"")}, t(u"ac")},
        {u"Replace", {t(u"abc"), t(u"b"), t(u"y"), n(9)}, t(u"")},
        {u"Replace", {t(u"abc"), t(u"b"), t(u"y"), n(1), n(0)}, t(u"abc")},
        {u"Replace", {t(u"Öl"), t(u"ö"), t(u"oe")}, t(u"oel")},
        {u"Replace", {t(u"aaa"), t(u"a"), t(u"aa")}, t(u"aaaaaa")},
        {u"Replace", {null, t(u"b"), t(u"y")}, null},
    });
    checkErrors({
        {u"Replace", {t(u"a"), t(u"a"), t(u"b"), n(0)}, 5},
        {u"Replace", {t(u"a"), t(u"a"), t(u"b"), n(1), n(-2)}, 5},
        {u"Replace", {QString(10000, u'a'), t(u"a"), QString(10000, u'b')}, 6},
    });
}

TEST(TextFunctions, strComp) {
    checkResults({
        {u"StrComp", {t(u"öl"), t(u"ÖL")}, n(0)},
        {u"StrComp", {t(u"ä"), t(u"b")}, n(-1)},
        {u"StrComp", {t(u"b"), t(u"A")}, n(1)},
        {u"StrComp", {t(u"a"), t(u"A"), n(0)}, n(1)},
        {u"StrComp", {t(u"a"), t(u"A"), n(1)}, n(0)},
        {u"StrComp", {null, t(u"A")}, null},
    });
    checkErrors({{u"StrComp", {t(u"a"), t(u"A"), n(7)}, 5}});
}
