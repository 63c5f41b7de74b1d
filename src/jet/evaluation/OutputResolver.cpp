#include "jet/evaluation/OutputResolver.h"

#include "jet/model/Raise.h"

namespace jet {

namespace {

constexpr mkl::Long unknownName = 3070;
constexpr mkl::Long ambiguousName = 3079;

QString fullName(const Name& name) {
    return name.qualifier.isEmpty() ? name.name.toString() : name.qualifier.toString() + u'.' + name.name.toString();
}

bool showSameColumn(const OutputColumn& a, const OutputColumn& b) {
    return !a.sourceColumn.isEmpty() && a.sourceColumn == b.sourceColumn && a.sourceTable == b.sourceTable &&
           a.sourceAlias == b.sourceAlias;
}

} // namespace

bool OutputResolver::resolve(Name& name, Range) const {
    name.column = name.qualifier.isEmpty() ? findBare(name) : findQualified(name);
    if (name.column < 0) raiseAt(unknownName, spanOf(name.qualifier, name.name), {fullName(name)});
    name.source = 0;
    return true;
}

// A column that is shown twice is the same under both numbers.
int OutputResolver::find(const Name& name, const Test& test) const {
    int found = -1;
    for (int number = 0; number < static_cast<int>(columns_.size()); ++number) {
        if (!test(column(number))) continue;
        if (found < 0)
            found = number;
        else if (!showSameColumn(column(found), column(number)))
            raiseAt(ambiguousName, spanOf(name.qualifier, name.name), {fullName(name)});
    }
    return found;
}

int OutputResolver::findBare(const Name& name) const {
    const int output = find(name, [&](const OutputColumn& column) { return sameName(column.name, name.name); });
    if (output >= 0) return output;
    return find(name, [&](const OutputColumn& column) { return sameName(column.sourceColumn, name.name); });
}

int OutputResolver::findQualified(const Name& name) const {
    const auto ofSource = [&](QString OutputColumn::*source) {
        return find(name, [&](const OutputColumn& column) {
            return sameName(column.sourceColumn, name.name) && sameName(column.*source, name.qualifier);
        });
    };
    if (const int found = ofSource(&OutputColumn::sourceAlias); found >= 0) return found;
    if (const int found = ofSource(&OutputColumn::sourceTable); found >= 0) return found;
    const QString full = fullName(name);
    return find(name, [&](const OutputColumn& column) { return sameName(column.name, full); });
}

} // namespace jet
