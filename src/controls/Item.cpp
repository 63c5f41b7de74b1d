#include "controls/Item.h"

#include <QHash>
#include <QList>

namespace mkl {

namespace {

/// Every image key that was ever set, once. The keys are few, the items many, and items outlive their control.
class ImageKeys {
public:
    quint32 numberOf(const QString& key) {
        const auto found = numbers_.constFind(key);
        if (found != numbers_.cend()) return *found;
        const auto number = static_cast<quint32>(keys_.size());
        keys_.append(key);
        numbers_.insert(key, number);
        return number;
    }
    const QString& key(quint32 number) const { return keys_[number]; }

private:
    QList<QString> keys_{QString()};
    QHash<QString, quint32> numbers_{{QString(), 0}};
};

ImageKeys& imageKeys() {
    static ImageKeys keys;
    return keys;
}

} // namespace

Item::Item(const QString& key, const QString& text)
    : key_(key.toStdString())
    , text_(text.toStdString()) {}

void Item::setKey(const QString& key) {
    rekey(key.toStdString());
}

void Item::setText(const QString& text) {
    text_ = text.toStdString();
    changed();
}

QString Item::image() const {
    return imageKeys().key(image_);
}

void Item::setImage(const QString& key) {
    image_ = imageKeys().numberOf(key);
    changed();
}

} // namespace mkl
