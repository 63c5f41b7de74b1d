// The pointer's picture during a drag, and the pictures that the catalogue has for it.
#include "controls/CatalogueImages.h"
#include "controls/DragFixture.h"
#include "controls/Image.h"

#include <set>

namespace mkl {

namespace {

constexpr std::array pictures{DragPicture::MoveArticle, DragPicture::CopyArticle, DragPicture::MoveFolder,
                              DragPicture::CopyFolder, DragPicture::NoDrop};

QImage shown() {
    const QCursor* const cursor = QApplication::overrideCursor();
    return cursor ? cursor->pixmap().toImage() : QImage();
}

} // namespace

TEST_F(DragFixture, ThePointerShowsTheIcon) {
    const QPixmap copy = dragPicture(DragPicture::CopyArticle);
    const QPixmap none = dragPicture(DragPicture::NoDrop);
    list->setDragIcon(none);
    EXPECT_FALSE(drags());
    dragFromList(2);
    EXPECT_EQ(shown(), none.toImage());
    EXPECT_EQ(QApplication::overrideCursor()->hotSpot(), dragHotSpot);
    list->setDragIcon(copy);
    EXPECT_EQ(shown(), copy.toImage());
    tree->setDragIcon(none); // of another view
    EXPECT_EQ(shown(), copy.toImage());
    list->setDragIcon({});
    ASSERT_TRUE(drags());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    list->setDragIcon(copy);
    WindowMouse::releaseAt(*tree, placeOf(u"b"_s));
    EXPECT_FALSE(drags());
    EXPECT_EQ(list->DragIcon().cacheKey(), copy.cacheKey());
}

TEST_F(DragFixture, OfSeveralIconsInOneHandlerTheLastOneShows) {
    const QPixmap copy = dragPicture(DragPicture::CopyArticle);
    QStringList seen;
    QObject::connect(tree, &ItemView::DragOver, [&] {
        list->setDragIcon({});
        seen << (shown().isNull() ? u"arrow"_s : u"picture"_s);
        list->setDragIcon(copy);
    });
    list->setDragIcon(dragPicture(DragPicture::NoDrop));
    dragFromList(2);
    moveTo(u"b"_s);
    EXPECT_EQ(seen, QStringList{u"picture"_s});
    EXPECT_EQ(shown(), copy.toImage());
}

TEST(DragPictures, AreFiveDifferentOnes) {
    std::set<QByteArray> contents;
    for (const DragPicture each : pictures) {
        const QImage picture = dragPicture(each).toImage().convertToFormat(QImage::Format_ARGB32);
        ASSERT_FALSE(picture.isNull());
        EXPECT_EQ(picture.size() / picture.devicePixelRatio(), QSize(32, 32));
        EXPECT_GT(qAlpha(picture.pixel(dragHotSpot.x(), dragHotSpot.y())), 200); // the tip of the arrow
        contents.emplace(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
    }
    EXPECT_EQ(contents.size(), pictures.size());
}

TEST(ImageTest, KeepsItsPictureWhileItIsHidden) {
    QWidget host;
    auto* const image = new Image(&host);
    image->hide();
    EXPECT_TRUE(image->Picture().isNull());
    const QPixmap picture = dragPicture(DragPicture::NoDrop);
    image->setPicture(picture);
    EXPECT_EQ(image->Picture().toImage(), picture.toImage());
    EXPECT_EQ(image->size(), QSize(32, 32));
    EXPECT_TRUE(image->isHidden());
    image->setPicture({});
    EXPECT_TRUE(image->Picture().isNull());
}

} // namespace mkl
