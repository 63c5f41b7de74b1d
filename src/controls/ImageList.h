#pragma once
#include "base/types.h"

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>

namespace mkl {

/// The pictures of an ImageList by key. Keys compare without regard to case.
class ListImageCollection {
public:
    /// A key twice is error 35602.
    void Add(const QString& key, const QIcon& picture, const QString& description = {});
    /// What the picture says of an item to those who cannot see it, such as "inaktiv"; empty for a missing key.
    QString Description(const QString& key) const;
    /// A missing key is error 35601.
    QIcon Item(const QString& key) const;
    bool Exists(const QString& key) const;
    Long Count() const { return static_cast<Long>(byKey_.size()); }
    void Clear();

private:
    QHash<QString, QIcon> byKey_; // by folded key
    QHash<QString, QString> descriptions_;
};

/// The pictures that several controls share. Controls hold it without owning it.
class ImageList : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    ListImageCollection& ListImages() { return images_; }
    const ListImageCollection& ListImages() const { return images_; }

    /// The picture of that key, an empty one when there is none.
    QIcon picture(const QString& key) const;

private:
    ListImageCollection images_;
};

} // namespace mkl
