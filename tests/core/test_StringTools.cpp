#include "core/StringTools.h"

#include "support/Printing.h"

using namespace Qt::StringLiterals;
using mkl::errorOf;
using mkl::StringTools;
using mkl::Variant;

TEST(AppendCriterion, PutsTheSeparatorOnlyBetween) {
    const StringTools tools;
    QString criteria;
    tools.AppendCriterion(criteria, u"[Parent] Is Null"_s, u" AND "_s, true);
    EXPECT_EQ(criteria, u"[Parent] Is Null"_s);
    tools.AppendCriterion(criteria, u"[Aktiv]=-1"_s, u" AND "_s, true);
    EXPECT_EQ(criteria, u"[Parent] Is Null AND [Aktiv]=-1"_s);

    QString list = u"3"_s;
    tools.AppendCriterion(list, u"7"_s, u","_s, false);
    EXPECT_EQ(list, u"3,7"_s);
}

TEST(Enclose, GoesRoundWhatIsNotEnclosed) {
    const StringTools tools;
    EXPECT_EQ(tools.Enclose(u"ARTIKEL/KATEGORIEN"_s, u"[]"_s), u"[ARTIKEL/KATEGORIEN]"_s);
    EXPECT_EQ(tools.Enclose(u"[Order]"_s, u"[]"_s), u"[Order]"_s);
    EXPECT_EQ(tools.Enclose({}, u"[]"_s), u"[]"_s);
    EXPECT_EQ(tools.Enclose(u"'"_s, u"''"_s), u"'''"_s);
    EXPECT_EQ(errorOf([&] { tools.Enclose(u"x"_s, u"["_s); }), mkl::err::InvalidArgument);
}

TEST(DefaultValue, StandsInForNullAlone) {
    const StringTools tools;
    EXPECT_EQ(tools.DefaultValue(Variant(), StringTools::IntegerType), Variant(0));
    EXPECT_EQ(tools.DefaultValue(Variant(4711), StringTools::IntegerType), Variant(4711));
    EXPECT_EQ(tools.DefaultValue(Variant(), StringTools::LongType), Variant(0));
    EXPECT_EQ(tools.DefaultValue(Variant(), StringTools::DoubleType), Variant(0.0));
    EXPECT_EQ(tools.DefaultValue(Variant(), StringTools::CurrencyType), Variant::currency(0));
    EXPECT_EQ(tools.DefaultValue(Variant(), StringTools::DateType), Variant::date(0));
    EXPECT_EQ(tools.DefaultValue(Variant(), StringTools::TextType), Variant(QString()));
    EXPECT_EQ(tools.DefaultValue(Variant(), StringTools::BooleanType), Variant(false));
    EXPECT_EQ(errorOf([&] { tools.DefaultValue(Variant(1), StringTools::TypeCode(99)); }), mkl::err::InvalidArgument);
}

TEST(DefaultValue, OfATextIsATextToo) {
    const StringTools tools;
    EXPECT_EQ(tools.DefaultValue(Variant(), u"-"_s), u"-"_s);
    EXPECT_EQ(tools.DefaultValue(Variant(u"Schrauben"_s), u"-"_s), u"Schrauben"_s);
    EXPECT_EQ(tools.DefaultValue(Variant(QString()), u"-"_s), QString());
    EXPECT_EQ(tools.DefaultValue(Variant(12), u"-"_s), u"12"_s);
}

TEST(TitleFromName, IsOneLine) {
    const StringTools tools;
    EXPECT_EQ(tools.TitleFromName(Variant(u"  Schrauben \r\n und\tMuttern "_s)), Variant(u"Schrauben und Muttern"_s));
    EXPECT_EQ(tools.TitleFromName(Variant(QString())), Variant(QString()));
    EXPECT_EQ(tools.TitleFromName(Variant()), Variant());
}

TEST(TitleFromName, IsCutToALengthAboveZero) {
    const StringTools tools;
    EXPECT_EQ(tools.TitleFromName(Variant(u"Schrauben und Muttern"_s), 0), Variant(u"Schrauben und Muttern"_s));
    EXPECT_EQ(tools.TitleFromName(Variant(u"Schrauben und Muttern"_s), 10), Variant(u"Schrauben"_s));
    EXPECT_EQ(tools.TitleFromName(Variant(u"Schrauben"_s), 255), Variant(u"Schrauben"_s));
}

TEST(StorableName, IsOneReadableLine) {
    const StringTools tools;
    EXPECT_EQ(tools.StorableName(u"  Schrauben \r\n und\tMuttern "_s, true, {}), u"Schrauben    und Muttern"_s);
    EXPECT_EQ(tools.StorableName(u" a "_s, false, {}), u" a "_s);
    EXPECT_EQ(tools.StorableName(u"M\u00A08 \u2028x"_s, true, {}), u"M\u00A08  x"_s);
    EXPECT_EQ(tools.StorableName(u"Ö'l & \"Fett\" 😀"_s, true, {}), u"Ö'l & \"Fett\" 😀"_s);
    EXPECT_EQ(tools.StorableName(u" \t\n"_s, true, {}), QString());
}

TEST(StorableName, ReplacesWhatIsNotForReading) {
    const StringTools tools;
    EXPECT_EQ(tools.StorableName(u"a\u0007b\u0085c"_s, true, u"?"_s), u"a?b c"_s);
    EXPECT_EQ(tools.StorableName(u"a"_s + QChar(0) + u"b"_s, true, {}), u"ab"_s);
    EXPECT_EQ(tools.StorableName(u"a"_s + QChar(0xD83D) + u"b"_s, true, u"_"_s), u"a_b"_s);
    EXPECT_EQ(tools.StorableName(u"a\uFFFFb"_s, true, {}), u"ab"_s);
}
