#include "jet/binding/OutputNames.h"

#include "jet/binding/SelectBinder.h"
#include "jet/model/Raise.h"

#include <QHash>

namespace jet {

namespace {

constexpr mkl::Long selectSyntax = 3141;
constexpr int firstExpression = 1000;

// Whether the output shows a column of a table under the column's own name.
bool isBareColumn(const BoundOutput& output) {
    return output.column.name.isEmpty() && !output.column.sourceTable.isEmpty();
}

QString nameOf(const BoundOutput& output, int& expressions) {
    if (!output.column.name.isEmpty()) return output.column.name;
    if (isBareColumn(output)) return output.column.sourceColumn;
    return QStringLiteral("Expr%1").arg(firstExpression + expressions++);
}

} // namespace

void nameColumns(BoundSelect& select) {
    int expressions = 0;
    QStringList names;
    QHash<QString, int> carriers, aliases;
    for (const BoundOutput& output : select.outputs) {
        names.append(nameOf(output, expressions));
        const QString folded = foldName(names.last());
        ++carriers[folded];
        if (!isBareColumn(output) && ++aliases[folded] > 1) raiseAt(selectSyntax, output.text, {names.last()});
    }
    qsizetype index = 0;
    for (BoundOutput& output : select.outputs) {
        const QString& name = names[index++];
        const bool repeated = isBareColumn(output) && carriers[foldName(name)] > 1;
        const auto* const column = output.expression->as<Name>();
        output.column.name = repeated ? select.scope[column->source].name + u'.' + name : name;
    }
}

} // namespace jet
