#include "jet/model/Schema.h"

namespace jet {

QString foldName(QStringView name) {
    QString folded = name.toString();
    for (QChar& c : folded)
        c = c.toCaseFolded();
    return folded;
}

bool sameName(QStringView a, QStringView b) {
    if (a.size() != b.size()) return false;
    for (qsizetype i = 0; i < a.size(); ++i)
        if (a[i] != b[i] && a[i].toCaseFolded() != b[i].toCaseFolded()) return false;
    return true;
}

int Table::columnIndex(QStringView columnName) const {
    for (int i = 0; i < columns.size(); ++i)
        if (sameName(columns[i].name, columnName)) return i;
    return -1;
}

const Index* Table::index(QStringView indexName) const {
    for (const Index& candidate : indexes)
        if (sameName(candidate.name, indexName)) return &candidate;
    return nullptr;
}

} // namespace jet
