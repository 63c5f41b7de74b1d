#include "controls/CatalogueImages.h"

#include "base/Texts.h"
#include "controls/ImageList.h"
#include "controls/SvgIcon.h"

#include <QGuiApplication>

#include <array>

// Outside of any namespace, as the macro wants it: a static library's resources are linked in only when asked for.
static void initResources() {
    Q_INIT_RESOURCE(controls);
}

namespace mkl {

namespace {

struct Picture {
    const char16_t* key;
    const char16_t* file;
};

// Keys with a 1 and keys without a state are aliases of the first set.
constexpr std::array pictures{
    Picture{u"OrdnerZu", u"folder-closed-on"},
    Picture{u"OrdnerZu1", u"folder-closed-on"},
    Picture{u"OrdnerZuOn", u"folder-closed-on"},
    Picture{u"OrdnerZuOn1", u"folder-closed-on"},
    Picture{u"OrdnerZuOff", u"folder-closed-off"},
    Picture{u"OrdnerZuOff1", u"folder-closed-off"},
    Picture{u"OrdnerAuf", u"folder-open-on"},
    Picture{u"OrdnerAuf1", u"folder-open-on"},
    Picture{u"OrdnerAufOn", u"folder-open-on"},
    Picture{u"OrdnerAufOn1", u"folder-open-on"},
    Picture{u"OrdnerAufOff", u"folder-open-off"},
    Picture{u"OrdnerAufOff1", u"folder-open-off"},
    Picture{u"OrdnerZu2On", u"folder2-closed-on"},
    Picture{u"OrdnerZu2Off", u"folder2-closed-off"},
    Picture{u"OrdnerAuf2On", u"folder2-open-on"},
    Picture{u"OrdnerAuf2Off", u"folder2-open-off"},
    Picture{u"On", u"article-on"},
    Picture{u"On1", u"article-on"},
    Picture{u"Off", u"article-off"},
    Picture{u"Off1", u"article-off"},
};

QIcon load(QStringView file) {
    initResources();
    return svgIcon(QStringLiteral(":/mkl/icons/%1.svg").arg(file));
}

} // namespace

ImageList* catalogueImages(QObject* parent) {
    auto* const images = new ImageList(parent);
    for (const Picture& picture : pictures) {
        const QStringView file(picture.file);
        const QString description = file.endsWith(u"-off") ? text(TextId::ImageInactive) : QString();
        images->ListImages().Add(QString::fromUtf16(picture.key), load(file), description);
    }
    return images;
}

QPixmap dragPicture(DragPicture picture) {
    constexpr std::array files{u"drag-article-move", u"drag-article-copy", u"drag-folder-move", u"drag-folder-copy",
                               u"drag-none"};
    constexpr QSize size(32, 32);
    return load(files.at(static_cast<size_t>(picture))).pixmap(size, qApp->devicePixelRatio());
}

QIcon applicationIcon() {
    return load(u"app");
}

} // namespace mkl
