#include "controls/ImageList.h"

#include "base/RunTimeError.h"

namespace mkl {

void ListImageCollection::Add(const QString& key, const QIcon& picture, const QString& description) {
    if (Exists(key)) throwError(err::KeyNotUnique, {key});
    byKey_.insert(key.toCaseFolded(), picture);
    if (!description.isEmpty()) descriptions_.insert(key.toCaseFolded(), description);
}

QString ListImageCollection::Description(const QString& key) const {
    return descriptions_.value(key.toCaseFolded());
}

void ListImageCollection::Clear() {
    byKey_.clear();
    descriptions_.clear();
}

QIcon ListImageCollection::Item(const QString& key) const {
    const auto found = byKey_.constFind(key.toCaseFolded());
    if (found == byKey_.cend()) throwError(err::ElementNotFound, {key});
    return *found;
}

bool ListImageCollection::Exists(const QString& key) const {
    return byKey_.contains(key.toCaseFolded());
}

QIcon ImageList::picture(const QString& key) const {
    return images_.Exists(key) ? images_.Item(key) : QIcon();
}

} // namespace mkl
