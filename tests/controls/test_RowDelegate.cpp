// Rows are drawn in the little room that columns have.
#include "controls/ImageList.h"
#include "controls/ListView.h"
#include "controls/SvgIcon.h"
#include "controls/Twips.h"
#include "support/Printing.h"

#include <QApplication>
#include <QHeaderView>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class RowDelegateTest : public ::testing::Test {
protected:
    RowDelegateTest() {
        QPixmap square(16, 16);
        square.fill(Qt::blue);
        images.ListImages().Add(u"On"_s, square);
        list.setSmallIcons(&images);
        list.resize(400, 200);
    }

    /// Room for a picture, the text and 100 twips.
    Single widthFor(const QString& text) const {
        return 16 * screen().TwipsPerPixelX() + twipsX(list.fontMetrics().horizontalAdvance(text)) + 100;
    }
    void show(const QString& text, Single width) {
        list.ColumnHeaders().Add(u"Nr."_s, width);
        list.ColumnHeaders().Add(u"Name"_s, 1500);
        const Ref<ListItem> row = list.ListItems().Add({}, {}, text);
        row->setSmallIcon(u"On"_s);
        row->setSubItems(1, u"Name"_s);
        list.show();
        QApplication::processEvents();
    }
    QRect cell(int column) const { return list.visualRect(list.model()->index(0, column)); }
    QImage picture(const QRect& part) { return list.viewport()->grab(part).toImage(); }

    ImageList images;
    ListView list;
};

} // namespace

TEST_F(RowDelegateTest, aTextShowsWholeInTheRoomThatIsCountedForIt) {
    const QString number = u"04711"_s;
    const Single width = widthFor(number);
    show(number, width);
    EXPECT_LE(list.sizeHintForIndex(list.model()->index(0, 0)).width(), cell(0).width());
    const QRect contents = cell(0).adjusted(0, 0, -1, 0);
    const QImage narrow = picture(contents);
    list.ColumnHeaders().Item(1)->setWidth(2 * width);
    QApplication::processEvents();
    EXPECT_EQ(picture(contents), narrow);
}

TEST_F(RowDelegateTest, aTextThatIsTooLongIsElided) {
    show(u"0471147114711"_s, widthFor(u"04711"_s));
    const QRect contents = cell(0).adjusted(0, 0, -1, 0);
    const QImage narrow = picture(contents);
    list.ColumnHeaders().Item(1)->setWidth(4000);
    QApplication::processEvents();
    EXPECT_NE(picture(contents), narrow);
    EXPECT_GT(list.sizeHintForIndex(list.model()->index(0, 0)).width(), contents.width());
}

TEST_F(RowDelegateTest, aSelectedRowHasTheColoursOfTheSelection) {
    QPalette palette = list.palette();
    palette.setColor(QPalette::Highlight, Qt::black);
    palette.setColor(QPalette::HighlightedText, Qt::red);
    palette.setColor(QPalette::Text, Qt::darkGreen);
    list.setPalette(palette);
    show(u"04711"_s, widthFor(u"04711"_s));
    // Edges of letters are mixed with what lies behind.
    const auto has = [this](int (QColor::*more)() const, int (QColor::*less)() const) {
        const QImage cells = picture(cell(0));
        for (int x = 0; x < cells.width(); ++x)
            for (int y = 0; y < cells.height(); ++y)
                if (const QColor at = cells.pixelColor(x, y); (at.*more)() > (at.*less)() + 60) return true;
        return false;
    };
    const auto showsGreen = [&] { return has(&QColor::green, &QColor::red); };
    const auto showsRed = [&] { return has(&QColor::red, &QColor::green); };
    EXPECT_TRUE(showsGreen());
    EXPECT_FALSE(showsRed());
    list.ListItems().Item(1)->setSelected(true);
    QApplication::processEvents();
    EXPECT_TRUE(showsRed());
    EXPECT_FALSE(showsGreen());
}

// A frame of the focus over a row's cells would make it look selected.
TEST_F(RowDelegateTest, theFocusIsAThinFrameAroundTheRow) {
    list.setMultiSelect(true);
    show(u"04711"_s, 1500);
    list.activateWindow();
    QApplication::processEvents();
    list.clearFocus();
    const QRect row = cell(0) | cell(1);
    const QImage without = picture(row);
    list.setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    ASSERT_TRUE(list.hasFocus());
    ASSERT_EQ(list.currentIndex().row(), 0);
    const QImage with = picture(row);
    EXPECT_NE(with, without);
    const QRect inside = QRect(QPoint(), row.size()).adjusted(1, 1, -1, -1);
    EXPECT_EQ(with.copy(inside), without.copy(inside));
}

TEST_F(RowDelegateTest, rowsWithoutAPictureAreTheToolkits) {
    show(u"04711"_s, 1500);
    const QSize withPicture = list.sizeHintForIndex(list.model()->index(0, 0));
    list.ListItems().Item(1)->setSmallIcon({});
    const QSize without = list.sizeHintForIndex(list.model()->index(0, 0));
    EXPECT_GT(withPicture.width(), without.width());
}

} // namespace mkl
