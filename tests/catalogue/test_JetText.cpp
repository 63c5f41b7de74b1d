#include "catalogue/mdb/JetText.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

QByteArray utf16(const QString& text) {
    return {reinterpret_cast<const char*>(text.constData()), text.size() * 2};
}

} // namespace

TEST(JetText, plainTextIsUtf16) {
    EXPECT_EQ(decodeJetText(utf16(u"Säge „Ω“"_s)), u"Säge „Ω“"_s);
    EXPECT_EQ(decodeJetText(utf16(u"😀"_s)), u"😀"_s);
    EXPECT_EQ(decodeJetText(QByteArrayView()), QString());
}

TEST(JetText, compressedTextIsLatin1) {
    EXPECT_EQ(decodeJetText(QByteArrayView("\xFF\xFES\xE4ge")), u"Säge"_s);
    EXPECT_EQ(decodeJetText(QByteArrayView("\xFF\xFE")), QString());
}

TEST(JetText, aZeroByteChangesBetweenTheTwoForms) {
    EXPECT_EQ(decodeJetText(QByteArrayView("\xFF\xFE"
                                           "a\0\xA9\x03\0b",
                                           8)),
              u"aΩb"_s);
}

TEST(JetText, aNulCharacterInsideATextSurvives) {
    EXPECT_EQ(decodeJetText(QByteArrayView("a\0\0\0b\0", 6)), QString::fromUtf16(u"a\0b", 3));
}

TEST(JetText, halfAUnitAndHalfACharacterAreNoText) {
    EXPECT_FALSE(decodeJetText(QByteArrayView("abc", 3)));
    EXPECT_FALSE(decodeJetText(QByteArrayView("\xFF\xFE"
                                              "a\0\xA9",
                                              5)));
    EXPECT_FALSE(decodeJetText(QByteArrayView("\x3D\xD8", 2)));
}
