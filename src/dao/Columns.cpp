#include "dao/Columns.h"

namespace dao {

Columns::Columns(QList<jet::OutputColumn> columns)
    : columns_(std::move(columns)) {
    const auto add = [this](const QString& name, int ordinal) {
        const QString folded = jet::foldName(name);
        if (!folded_.contains(folded)) folded_.insert(folded, ordinal);
    };
    for (int ordinal = 0; ordinal < count(); ++ordinal)
        add(at(ordinal).name, ordinal);
    for (int ordinal = 0; ordinal < count(); ++ordinal)
        if (!at(ordinal).sourceColumn.isEmpty())
            add(at(ordinal).sourceTable + u'.' + at(ordinal).sourceColumn, ordinal);
}

int Columns::find(QStringView name) const {
    // Nearly all callers spell a name as it is declared.
    for (int ordinal = 0; ordinal < count(); ++ordinal)
        if (columns_[ordinal].name == name) return ordinal;
    return folded_.value(jet::foldName(name), -1);
}

} // namespace dao
