#include "jet/writing/RowKeys.h"

namespace jet {

QList<RowKey> rowKeysOf(const Scope::Source& source, const Target& target) {
    const QByteArray table = target.name(source.name);
    QList<RowKey> keys;
    const auto add = [&](const Column& column) { keys.append({table + '.' + target.name(column.name), column.type}); };
    for (const int column : source.table->primaryKey)
        add(source.table->columns[column]);
    if (source.derived)
        for (const Column& column : source.table->columns)
            add(column);
    if (keys.isEmpty()) keys.append({target.rowIdentity(table), ColumnType::Int});
    return keys;
}

} // namespace jet
