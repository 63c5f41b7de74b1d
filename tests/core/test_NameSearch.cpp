#include "core/NameSearch.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

bool finds(const QString& term, const QString& name) {
    return NameSearch(term).finds(name.toStdString());
}

} // namespace

TEST(NameSearchTest, WithoutAStarTheWholeName) {
    EXPECT_TRUE(finds(u"Schraube"_s, u"Schraube"_s));
    EXPECT_FALSE(finds(u"Schraube"_s, u"Schrauben"_s));
    EXPECT_FALSE(finds(u"Schraube"_s, u"Schraub"_s));
    EXPECT_FALSE(finds(u"Schraube"_s, QString()));
}

TEST(NameSearchTest, CaseDoesNotCount) {
    EXPECT_TRUE(finds(u"sCHRAUBE"_s, u"Schraube"_s));
    EXPECT_TRUE(finds(u"GEWÜRZMÜHLE"_s, u"Gewürzmühle"_s));
    EXPECT_TRUE(finds(u"größe"_s, u"GRÖSSE"_s));
    EXPECT_FALSE(finds(u"Muhle"_s, u"Mühle"_s));
    EXPECT_TRUE(finds(u"gewürz*"_s, u"GEWÜRZMÜHLE"_s));
}

TEST(NameSearchTest, WithAStarAPattern) {
    EXPECT_TRUE(finds(u"schraube*"_s, u"Schraubendreher"_s));
    EXPECT_TRUE(finds(u"*dreher"_s, u"Schraubendreher"_s));
    EXPECT_TRUE(finds(u"*"_s, QString()));
    EXPECT_TRUE(finds(u"M?tter*"_s, u"Mutter M8"_s));
    EXPECT_FALSE(finds(u"M?tter"_s, u"Mutter"_s)) << "without a star it is no pattern";
    EXPECT_TRUE(finds(u"M?tter"_s, u"m?TTER"_s));
    EXPECT_TRUE(finds(u"A/B*"_s, u"a/b/c"_s));
}

TEST(NameSearchTest, ABrokenPatternIsAnError) {
    const NameSearch search(u"[a*"_s);
    EXPECT_EQ(errorOf([&] { search.finds("a"); }), 93);
}

} // namespace mkl
