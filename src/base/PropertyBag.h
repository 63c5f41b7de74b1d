#pragma once
#include <QMap>
#include <QString>
#include <QVariant>

namespace mkl {

/// What a host keeps of a control's design-time properties. Names compare without regard to case.
class PropertyBag {
public:
    /// The stored value, or the default.
    QVariant ReadProperty(const QString& name, const QVariant& defaultValue = {}) const;
    /// Stores the value; one equal to the default is not stored, and what was stored goes.
    void WriteProperty(const QString& name, const QVariant& value, const QVariant& defaultValue = {});

    /// Names of the stored properties, as they were written.
    QStringList names() const;

private:
    struct Entry {
        QString name;
        QVariant value;
    };
    QMap<QString, Entry> entries_; // by folded name
};

} // namespace mkl
