#include "jet/FakeCatalogue.h"

#include "base/RunTimeError.h"
#include "base/Texts.h"
#include "jet/Compiler.h"
#include "jet/model/Raise.h"
#include "jet/syntax/Shape.h"
#include "support/Printing.h"

using namespace jet;
using namespace Qt::StringLiterals;

namespace {

// "number|token|position" of the error that the call raises, the position from 0, or -1.
template<class Call>
QString placeOf(Call&& call) {
    try {
        call();
    } catch (const mkl::RunTimeError& error) {
        const auto& place = error.place();
        return u"%1|%2|%3"_s.arg(error.number())
            .arg(place ? place->token : QString())
            .arg(place ? place->position : -1);
    }
    return u"none"_s;
}

QString placeIn(QStringView statement) {
    return placeOf([&] {
        shapeOf(statement);
        planOf(statement);
    });
}

QString descriptionOf(QStringView statement) {
    try {
        planOf(statement);
    } catch (const mkl::RunTimeError& error) {
        return error.description();
    }
    return {};
}

} // namespace

TEST(Raise, TheDescriptionEndsWithTokenAndPlace) {
    EXPECT_EQ(descriptionOf(u"SELECT * Frm TYPEN"), u"Syntaxfehler im Ausdruck: Frm TYPEN (bei „Frm“, Stelle 10)"_s);
    EXPECT_EQ(descriptionOf(u"SELECT * FROM"),
              u"Syntaxfehler in der FROM-Klausel: SELECT * FROM (am Ende, Stelle 14)"_s);
    // A full stop stays at the end.
    EXPECT_EQ(descriptionOf(u"SELECT * FROM NIRGENDS"),
              u"Die Tabelle oder Abfrage 'NIRGENDS' wurde nicht gefunden (bei „NIRGENDS“, Stelle 15)."_s);
    mkl::setTextLanguage(mkl::Language::English);
    EXPECT_EQ(descriptionOf(u"SELECT * Frm TYPEN"), u"Syntax error in expression: Frm TYPEN (at “Frm”, position 10)"_s);
    mkl::setTextLanguage(mkl::Language::German);
}

TEST(Raise, SyntaxErrorsNameTheirToken) {
    EXPECT_EQ(placeIn(u"DROP TABLE ARTIKEL"), u"3129|DROP|0"_s);
    EXPECT_EQ(placeIn(u""), u"3129||0"_s);
    EXPECT_EQ(placeIn(u"SELECT * FROM TYPEN; DELETE FROM TYPEN"), u"3142|DELETE|21"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN WHERE lng = 'offen"), u"3075|'offen|34"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN WHERE lng ? 1"), u"3075|?|32"_s);
    EXPECT_EQ(placeIn(u"SELECT [lng FROM TYPEN"), u"3126|[lng FROM TYPEN|7"_s);
    EXPECT_EQ(placeIn(u"SELECT [a[b] FROM TYPEN"), u"3126|[a[|7"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN WHERE dat=#WGFILTER#"), u"3075|#WGFILTER#|32"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN WHERE (lng=1"), u"3075||34"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN WHERE"), u"3145||27"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN ORDER BY lng,"), u"3138||35"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN GROUP BY"), u"3132||30"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN HAVING"), u"3133||28"_s);
    EXPECT_EQ(placeIn(u"SELECT TOP x lng FROM TYPEN"), u"3308|x|11"_s);
    EXPECT_EQ(placeIn(u"SELECT TOP 0 lng FROM TYPEN"), u"3308|0|11"_s);
    EXPECT_EQ(placeIn(u"UPDATE TYPEN lng=1"), u"3144|=|16"_s);
    EXPECT_EQ(placeIn(u"INSERT TYPEN VALUES (1)"), u"3134|TYPEN|7"_s);
    EXPECT_EQ(placeIn(u"DELETE TYPEN"), u"3128||12"_s);
    EXPECT_EQ(placeIn(u"DELETE * TYPEN"), u"3130|TYPEN|9"_s);
    EXPECT_EQ(placeIn(u"SELECT 1 FROM ARTIKEL INNER JOIN ARTKAT WHERE 1=1"), u"3135|WHERE|40"_s);
}

TEST(Raise, NamesAreShownWithTheirBrackets) {
    EXPECT_EQ(placeIn(u"SELECT [ gibt es nicht ] FROM TYPEN"), u"3061|[ gibt es nicht ]|7"_s);
    EXPECT_EQ(placeIn(u"SELECT a.[b], nix FROM TYPEN"), u"3061|a.[b]|7"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM [KEINE/TABELLE]"), u"3078|[KEINE/TABELLE]|16"_s);
    EXPECT_EQ(placeIn(u"SELECT [a.b] FROM TYPEN"), u"3126|[a.b]|7"_s);
    EXPECT_EQ(placeIn(u"SELECT [Artikel-Schlüssel] FROM ARTIKEL, ARTKAT"), u"3079|[Artikel-Schlüssel]|7"_s);
    EXPECT_EQ(placeIn(u"SELECT 1 FROM ARTIKEL, ARTIKEL"), u"3081|ARTIKEL|23"_s);
}

TEST(Raise, BinderErrorsNameTheirToken) {
    EXPECT_EQ(placeIn(u"SELECT Foo(lng) FROM TYPEN"), u"3085|Foo|7"_s);
    EXPECT_EQ(placeIn(u"SELECT Left(txt) FROM TYPEN"), u"3075|Left(txt)|7"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN WHERE lng = '20'"), u"3464|lng = '20'|28"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN WHERE Sum(lng)>1"), u"3096|Sum(lng)|28"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN ORDER BY Sum(lng)"), u"3097|Sum(lng)|31"_s);
    EXPECT_EQ(placeIn(u"SELECT 1 FROM TYPEN GROUP BY Sum(lng)"), u"3098|Sum(lng)|29"_s);
    EXPECT_EQ(placeIn(u"SELECT Max(Sum(lng)) FROM TYPEN"), u"3095|Sum(lng)|11"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN HAVING lng"), u"3091|lng|29"_s);
    EXPECT_EQ(placeIn(u"SELECT DISTINCT lng FROM TYPEN ORDER BY txt"), u"3093|txt|40"_s);
    EXPECT_EQ(placeIn(u"SELECT *, Sum(lng) FROM TYPEN"), u"3121|*|7"_s);
    EXPECT_EQ(placeIn(u"SELECT lng, Sum(dbl) FROM TYPEN"), u"3122|lng|7"_s);
    EXPECT_EQ(placeIn(u"SELECT lng AS a, txt AS a FROM TYPEN"), u"3141|txt|17"_s);
    EXPECT_EQ(placeIn(u"SELECT lng FROM TYPEN ORDER BY 7"), u"3138|7|31"_s);
    EXPECT_EQ(placeIn(u"SELECT x.* FROM TYPEN"), u"3078|x|7"_s);
    EXPECT_EQ(placeIn(u"INSERT INTO NIX (a) VALUES (1)"), u"3192|NIX|12"_s);
    EXPECT_EQ(placeIn(u"INSERT INTO TYPEN (nix) VALUES (1)"), u"3127|nix|19"_s);
    EXPECT_EQ(placeIn(u"INSERT INTO TYPEN (lng) VALUES (1, 2)"), u"3346|2|35"_s);
    EXPECT_EQ(placeIn(u"INSERT INTO TYPEN (lng, txt) VALUES (1)"), u"3346|1|37"_s);
    EXPECT_EQ(placeIn(u"DELETE x.* FROM TYPEN"), u"3128|x.*|7"_s);
}

TEST(Raise, ACriterionCountsItsOwnPlaces) {
    EXPECT_EQ(placeOf([] { checkCriterion(u"lng=1) OR (1=1"); }), u"3075|)|5"_s);
    EXPECT_EQ(placeOf([] { checkCriterion(u"lng="); }), u"3075||4"_s);
}

TEST(Raise, TooLargeTextsAreNotShownWhole) {
    EXPECT_EQ(placeIn(u"SELECT "_s + QString(300, u'(')), u"3360|(|257"_s);
    EXPECT_EQ(placeIn(QString(200'000, u'x')).section(u'|', 0, 0), u"3360"_s);
    EXPECT_LT(placeIn(u"SELECT '"_s + QString(1000, u'x')).size(), 80);
}

TEST(Raise, ControlCharactersAreMadeVisible) {
    EXPECT_EQ(excerpt(u"a\nb"), u"a␊b"_s);
    EXPECT_EQ(excerpt(QString(QChar(u'\0'))), u"␀"_s);
    EXPECT_EQ(excerpt(QString(61, u'x')), QString(60, u'x') + u'…');
}

TEST(Raise, APieceOfAnotherTextHasNoPlace) {
    const QString other = u"anderer Text"_s;
    EXPECT_EQ(placeOf([&] { raiseAt(3075, other, {other}); }), u"3075||-1"_s);
    const QString text = u"der Text"_s;
    const TextInWork outer(text);
    {
        const TextInWork inner(other);
        EXPECT_EQ(placeOf([&] { raiseAt(3075, text, {text}); }), u"3075||-1"_s);
    }
    EXPECT_EQ(placeOf([&] { raiseAt(3075, QStringView(text).sliced(4), {text}); }), u"3075|Text|4"_s);
    EXPECT_EQ(spanOf(QStringView(text).first(3), QStringView(text).sliced(4)), text);
    EXPECT_EQ(spanOf(QStringView(text).sliced(4), QStringView(text).first(3)), u"der"_s);
}
