#include "controls/SvgIcon.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace mkl {

namespace {

constexpr QByteArrayView inactiveGrey("#828282");
constexpr QByteArrayView selectedWhite("#ffffff");
constexpr double disabledOpacity = 0.4;

class SvgIconEngine final : public QIconEngine {
public:
    explicit SvgIconEngine(const QString& file)
        : file_(file) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        const QString key = QStringLiteral("mkl %1 %2x%3 %4").arg(file_).arg(size.width()).arg(size.height()).arg(mode);
        QPixmap drawn;
        if (QPixmapCache::find(key, &drawn)) return drawn;
        drawn = draw(size, mode);
        QPixmapCache::insert(key, drawn);
        return drawn;
    }

    QIconEngine* clone() const override { return new SvgIconEngine(file_); }
    bool isNull() override { return !QFile::exists(file_); }

private:
    QPixmap draw(const QSize& size, QIcon::Mode mode) const {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QFile file(file_);
        if (!file.open(QIODevice::ReadOnly)) return picture;
        QByteArray svg = file.readAll();
        if (mode == QIcon::Selected) svg.replace(inactiveGrey, selectedWhite);
        QPainter painter(&picture);
        if (mode == QIcon::Disabled) painter.setOpacity(disabledOpacity);
        QSvgRenderer renderer(svg);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter);
        return picture;
    }

    QString file_;
};

} // namespace

QIcon svgIcon(const QString& file) {
    return QIcon(new SvgIconEngine(file));
}

} // namespace mkl
