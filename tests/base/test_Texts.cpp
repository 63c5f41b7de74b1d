#include "base/Texts.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(Texts, argumentsAreInsertedInOnePass) {
    EXPECT_EQ(fillText(u"%1 und %2", {u"a%2"_s, u"b"_s}), u"a%2 und b"_s);
    EXPECT_EQ(fillText(u"100 % von %1 (%0)", {u"x"_s}), u"100 % von x (%0)"_s);
    EXPECT_EQ(fillText(u"%1%2", {u"nur eins"_s}), u"nur eins"_s);
}

TEST(Texts, codedMessageByNumber) {
    EXPECT_EQ(codedText(1024, {u"3"_s, u"7"_s}), u"Position 3 und Position 7 vertauschen"_s);
    EXPECT_TRUE(hasCodedText(-1072));
    EXPECT_FALSE(hasCodedText(4711));
    EXPECT_TRUE(codedText(4711).contains(u"4711"));
}

TEST(Texts, descriptionOfARunTimeError) {
    EXPECT_EQ(runTimeText(91), u"Objektvariable nicht festgelegt."_s);
    const RunTimeError error = [] {
        try {
            throwError(3078, {u"KUNDEN"_s}, u"no such table"_s);
        } catch (const RunTimeError& caught) {
            return caught;
        }
    }();
    EXPECT_EQ(error.number(), 3078);
    EXPECT_TRUE(error.description().contains(u"'KUNDEN'"));
    EXPECT_EQ(error.source(), u"no such table"_s);
}

TEST(Texts, englishWhereThereIsAnEnglishTextElseGerman) {
    setTextLanguage(Language::English);
    EXPECT_EQ(runTimeText(3024, {u"a"_s}), u"File 'a' not found."_s);
    EXPECT_EQ(runTimeText(91), u"Objektvariable nicht festgelegt."_s);
    EXPECT_EQ(text(TextId::UnknownMessage, {u"7"_s}), u"Message no. 7."_s);
    setTextLanguage(Language::German);
    EXPECT_EQ(runTimeText(3024, {u"a"_s}), u"Die Datei 'a' wurde nicht gefunden."_s);
}
