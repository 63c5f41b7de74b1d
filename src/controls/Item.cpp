#include "controls/Item.h"

#include <QHash>
#include <QList>

#include <array>

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
    : key_(utf8(key))
    , text_(utf8(text)) {}

// Without the way over a byte array; what needs more than two bytes a character is rare.
std::string Item::utf8(const QString& text) {
    constexpr qsizetype roomFor = 128;
    if (text.size() > roomFor) return text.toStdString();
    std::array<char, 2 * roomFor> bytes;
    char* end = bytes.data();
    for (const QChar character : text) {
        const char16_t c = character.unicode();
        if (c < 0x80) {
            *end++ = static_cast<char>(c);
        } else if (c < 0x800) {
            *end++ = static_cast<char>(0xC0 | (c >> 6));
            *end++ = static_cast<char>(0x80 | (c & 0x3F));
        } else {
            return text.toStdString();
        }
    }
    return {bytes.data(), end};
}

void Item::setKey(const QString& key) {
    rekey(utf8(key));
}

void Item::setText(const QString& text) {
    text_ = utf8(text);
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
