#pragma once
#include "base/Ref.h"
#include "base/Variant.h"

#include <string>
#include <string_view>

namespace mkl {

template<class T>
class ItemStore;

/// What a tree node and a list row have in common. Texts are kept as UTF-8: a catalogue's tree is large.
class Item : public RefCounted {
public:
    /// Unique within the collection, empty for none. Setting one that exists is error 35602.
    QString Key() const { return QString::fromStdString(key_); }
    void setKey(const QString& key);

    const Variant& Tag() const { return tag_; } ///< any value of the host
    void setTag(Variant tag) { tag_ = std::move(tag); }

    QString Text() const { return QString::fromStdString(text_); }
    void setText(const QString& text);

protected:
    Item(const QString& key, const QString& text);

    QString image() const; ///< key of the picture in the control's image list, as it was set
    void setImage(const QString& key);

    virtual void rekey(std::string key) = 0; ///< takes over the key, in the collection's hash too
    virtual void changed() = 0;              ///< text or picture

    const std::string& bytes() const { return text_; } ///< of the text
    static std::string utf8(const QString& text);

    void assignKey(std::string key) { key_ = std::move(key); }

private:
    template<class T>
    friend class ItemStore;
    friend class ItemModel;

    // Small members side by side: the first one fits behind the reference count.
    quint32 place_ = 0; // in the store
    std::string key_;
    std::string text_;
    Variant tag_;
    quint32 image_ = 0; // number of the image key, 0 = none
};

} // namespace mkl
