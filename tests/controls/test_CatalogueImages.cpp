#include "controls/CatalogueImages.h"

#include "controls/ImageList.h"
#include "controls/SvgIcon.h"
#include "support/Printing.h"

#include <QImage>
#include <cmath>
#include <memory>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

const QStringList keys{u"OrdnerZuOn"_s,   u"OrdnerZuOff"_s,  u"OrdnerAufOn"_s,   u"OrdnerAufOff"_s, u"OrdnerZu2On"_s,
                       u"OrdnerZu2Off"_s, u"OrdnerAuf2On"_s, u"OrdnerAuf2Off"_s, u"On"_s,           u"Off"_s,
                       u"OrdnerZu"_s,     u"OrdnerAuf"_s,    u"OrdnerZu1"_s,     u"OrdnerAuf1"_s,   u"OrdnerZuOn1"_s,
                       u"OrdnerZuOff1"_s, u"OrdnerAufOn1"_s, u"OrdnerAufOff1"_s, u"On1"_s,          u"Off1"_s};

double luminance(QRgb colour) {
    const auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double contrast(QRgb one, QRgb other) {
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QImage render(const QIcon& icon, int size, QIcon::Mode mode = QIcon::Normal) {
    return icon.pixmap(QSize(size, size), 1.0, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Opaque pixels that stand out from the background; 3 is what graphics need to be told apart.
int readablePixels(const QImage& picture, QRgb background) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (qAlpha(pixel) > 200 && contrast(pixel, background) >= 3.0) ++count;
        }
    return count;
}

int colouredPixels(const QImage& picture) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (pixel.alpha() > 200 && pixel.hsvSaturation() > 60) ++count;
        }
    return count;
}

class CatalogueImagesTest : public ::testing::Test {
protected:
    QObject owner;
    ImageList* images = catalogueImages(&owner);
};

} // namespace

TEST_F(CatalogueImagesTest, EveryKeyHasAPicture) {
    EXPECT_EQ(images->ListImages().Count(), keys.size());
    for (const QString& key : keys)
        EXPECT_FALSE(images->ListImages().Item(key).isNull()) << key.toStdString();
    EXPECT_FALSE(applicationIcon().pixmap(64).isNull());
}

TEST_F(CatalogueImagesTest, ReadableOnLightAndDark) {
    for (const QString& key : keys)
        for (const int size : {16, 32}) {
            const QImage picture = render(images->picture(key), size);
            ASSERT_EQ(picture.size(), QSize(size, size));
            for (const QRgb background : {qRgb(255, 255, 255), qRgb(0x20, 0x21, 0x24)})
                EXPECT_GE(readablePixels(picture, background), 20 * size / 16)
                    << key.toStdString() << ' ' << size << ' ' << std::hex << background;
        }
}

TEST_F(CatalogueImagesTest, InactiveIsReadableOnASelectedRow) {
    for (const QString& key : keys.filter(u"Off"_s))
        for (const QRgb background : {qRgb(0x30, 0x8c, 0xc6), qRgb(0x00, 0x78, 0xd7)})
            EXPECT_GE(readablePixels(render(images->picture(key), 16, QIcon::Selected), background), 20)
                << key.toStdString();
}

TEST_F(CatalogueImagesTest, SharpAtAnyScale) {
    for (const QString& key : keys) {
        const QPixmap doubled = images->picture(key).pixmap(QSize(16, 16), 2.0);
        EXPECT_EQ(doubled.size(), QSize(32, 32));
        EXPECT_EQ(doubled.toImage().convertToFormat(QImage::Format_ARGB32), render(images->picture(key), 32));
    }
}

TEST_F(CatalogueImagesTest, DisabledIsPale) {
    const QIcon icon = images->picture(u"On"_s);
    EXPECT_LT(qAlpha(render(icon, 16, QIcon::Disabled).pixel(8, 8)), qAlpha(render(icon, 16).pixel(8, 8)));
    EXPECT_TRUE(svgIcon(u":/mkl/icons/fehlt.svg"_s).isNull());
}

TEST_F(CatalogueImagesTest, ActiveIsColouredAndInactiveIsGrey) {
    for (const QString& key : keys) {
        const int coloured = colouredPixels(render(images->picture(key), 32));
        if (key.contains(u"Off"))
            EXPECT_EQ(coloured, 0) << key.toStdString();
        else
            EXPECT_GE(coloured, 150) << key.toStdString();
    }
}

TEST_F(CatalogueImagesTest, StatesAndSetsDiffer) {
    const QStringList distinct = keys.mid(0, 10);
    for (int i = 0; i < distinct.size(); ++i)
        for (int j = i + 1; j < distinct.size(); ++j)
            EXPECT_NE(render(images->picture(distinct[i]), 16), render(images->picture(distinct[j]), 16))
                << distinct[i].toStdString() << ' ' << distinct[j].toStdString();
}

TEST(ImageList, KeysWithoutCase) {
    ImageList list;
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    list.ListImages().Add(u"ÄOn"_s, QIcon(pixmap));
    EXPECT_TRUE(list.ListImages().Exists(u"äON"_s));
    EXPECT_FALSE(list.ListImages().Item(u"äon"_s).isNull());
    EXPECT_EQ(errorOf([&] { list.ListImages().Add(u"äon"_s, {}); }), 35602);
    EXPECT_EQ(errorOf([&] { list.ListImages().Item(u"x"_s); }), 35601);
    EXPECT_TRUE(list.picture(u"x"_s).isNull());
    list.ListImages().Clear();
    EXPECT_EQ(list.ListImages().Count(), 0);
}

} // namespace mkl
