#include "controls/Label.h"

#include "controls/Extender.h"
#include "controls/ToolTip.h"
#include "controls/Twips.h"
#include "support/Printing.h"

#include <QImage>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

Single lineHeight(const QWidget& label) {
    return twipsY(label.fontMetrics().lineSpacing());
}

/// The darkest and the lightest colour of the label as it is painted.
QList<QColor> extremesOf(Label& label) {
    const QImage image = label.grab().toImage();
    QColor darkest = Qt::white, lightest = Qt::black;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.lightness() < darkest.lightness()) darkest = color;
            if (color.lightness() > lightest.lightness()) lightest = color;
        }
    return {darkest, lightest};
}

} // namespace

TEST(Label, ShowsPlainText) {
    const QString name = u"<b>Meier & Söhne</b>"_s;
    const Label label(nullptr, name);
    EXPECT_EQ(label.Caption(), name);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(label.buddy(), nullptr); // so that "&" is no access key
}

TEST(Label, TakesAsManyLinesAsItsWidthAsksFor) {
    const Label label(nullptr, u"ein Satz aus mehreren Wörtern"_s);
    const Single whole = twipsX(label.fontMetrics().horizontalAdvance(label.Caption())) + 30;
    EXPECT_EQ(label.TextHeight(whole), lineHeight(label));
    EXPECT_EQ(label.TextHeight(whole / 2 + 600), 2 * lineHeight(label));
    EXPECT_EQ(Label(nullptr).TextHeight(whole), lineHeight(label));
}

TEST(Label, BreaksWordsThatAreLongerThanALine) {
    const Label label(nullptr, u"W"_s.repeated(60));
    const Single whole = twipsX(label.fontMetrics().horizontalAdvance(label.Caption()));
    EXPECT_EQ(label.TextHeight(whole / 2 + 600), 2 * lineHeight(label));
}

TEST(Label, CutsWhatGoesBeyondItsLinesAndTellsItByToolTip) {
    Label label(nullptr, u"<i>Wort</i> & "_s.repeated(500));
    setWidth(label, 3000);
    EXPECT_EQ(label.TextHeight(3000), 4 * lineHeight(label));
    EXPECT_EQ(label.toolTip(), plainToolTip(label.Caption()));
    label.setMostLines(1);
    EXPECT_EQ(label.TextHeight(3000), lineHeight(label));
    label.setCaption(u"kurz"_s);
    EXPECT_EQ(label.toolTip(), QString());
}

TEST(Label, AToolTipShowsTheTextAsItStands) {
    for (const QString& text : {u"Öl & Fett"_s, u"<b>a</b> &lt; &amp;"_s, u"kurz"_s}) {
        EXPECT_TRUE(Qt::mightBeRichText(plainToolTip(text)));
        EXPECT_EQ(QTextDocumentFragment::fromHtml(plainToolTip(text)).toPlainText(), text);
    }
    EXPECT_EQ(plainToolTip({}), QString());
}

TEST(Label, BoldTypeIsMeasuredAsSuch) {
    Label label(nullptr, u"ein Satz aus mehreren Wörtern"_s);
    const Single plain = twipsX(label.fontMetrics().horizontalAdvance(label.Caption())) + 30;
    EXPECT_EQ(label.TextHeight(plain, true), 2 * lineHeight(label));
    EXPECT_FALSE(label.FontBold());
    label.setFontBold(true);
    EXPECT_TRUE(label.FontBold());
    EXPECT_EQ(label.TextHeight(plain), 2 * lineHeight(label));
}

TEST(Label, PaintsItsColour) {
    Label label(nullptr, u"████"_s);
    label.resize(60, 20);
    QPalette palette(QColor(240, 240, 240));
    label.setPalette(palette);
    EXPECT_EQ(extremesOf(label).first(), palette.color(QPalette::WindowText));
    label.setForeColor(128);
    EXPECT_EQ(extremesOf(label).first(), QColor(128, 0, 0));
    label.setForeColor(255);
    EXPECT_EQ(label.ForeColor(), 255);
    EXPECT_EQ(extremesOf(label).first(), QColor(255, 0, 0));
}

TEST(Label, IsLightOnADarkGround) {
    Label label(nullptr, u"████"_s);
    label.resize(60, 20);
    QPalette palette(QColor(40, 40, 40));
    label.setPalette(palette);
    EXPECT_EQ(extremesOf(label).last(), palette.color(QPalette::WindowText));
    label.setForeColor(128);
    const QColor shown = extremesOf(label).last();
    EXPECT_GT(shown.red(), 240);
    EXPECT_GT(shown.lightness(), 180);
}

} // namespace mkl
