#include "base/PropertyBag.h"

#include <QStringList>

namespace mkl {

QVariant PropertyBag::ReadProperty(const QString& name, const QVariant& defaultValue) const {
    const auto entry = entries_.constFind(name.toCaseFolded());
    return entry == entries_.constEnd() ? defaultValue : entry->value;
}

void PropertyBag::WriteProperty(const QString& name, const QVariant& value, const QVariant& defaultValue) {
    if (value == defaultValue)
        entries_.remove(name.toCaseFolded());
    else
        entries_.insert(name.toCaseFolded(), {name, value});
}

QStringList PropertyBag::names() const {
    QStringList result;
    for (const Entry& entry : entries_)
        result << entry.name;
    return result;
}

} // namespace mkl
