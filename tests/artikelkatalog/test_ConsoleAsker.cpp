#include "apps/artikelkatalog/ConsoleAsker.h"
#include "support/Printing.h"

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

std::string printedBy(ConsoleAsker& asker, const MessageBox& box, Long expectedAnswer) {
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(asker.ask(box), expectedAnswer);
    return ::testing::internal::GetCapturedStderr();
}

TEST(ConsoleAsker, PrintsTheTextAndItsDetail) {
    ConsoleAsker asker;
    EXPECT_FALSE(asker.wasAsked());
    EXPECT_EQ(printedBy(asker, {.text = u"Größe"_s, .detail = u"zu klein"_s}, vbOK), "Größe\nzu klein\n");
    EXPECT_TRUE(asker.wasAsked());
}

TEST(ConsoleAsker, DeclinesEveryQuestion) {
    ConsoleAsker asker;
    printedBy(asker, {.text = u"?"_s, .flags = vbYesNo + vbCritical}, vbNo);
    printedBy(asker, {.text = u"?"_s, .flags = vbYesNoCancel + vbDefaultButton2}, vbCancel);
    printedBy(asker, {.text = u"?"_s, .flags = vbOKCancel + vbQuestion}, vbCancel);
}

TEST(ConsoleAsker, GivesNoTextForNobody) {
    ConsoleAsker asker;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(asker.askText(u"Name:"_s, {}, u"x"_s).has_value());
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Name:\n");
}

} // namespace
