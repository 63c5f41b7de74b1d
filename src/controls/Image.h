#pragma once
#include <QLabel>
#include <QPixmap>

namespace mkl {

/// Shows a picture in its own size, or only keeps it while it is hidden.
class Image final : public QLabel {
    Q_OBJECT

public:
    explicit Image(QWidget* parent = nullptr)
        : QLabel(parent) {}

    QPixmap Picture() const { return pixmap(Qt::ReturnByValue); }
    void setPicture(const QPixmap& picture) {
        setPixmap(picture);
        resize(picture.deviceIndependentSize().toSize());
    }
};

} // namespace mkl
