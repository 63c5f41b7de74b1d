#include "jet/writing/StoreWriter.h"

#include "jet/functions/StoreConversions.h"

namespace jet {

namespace {

// A text as all engines read it.
QByteArray textLiteral(const QString& text) {
    return '\'' + text.toUtf8().replace('\'', "''") + '\'';
}

} // namespace

QByteArray StoreWriter::stored(const QByteArray& native, const QByteArray& operand, ColumnType from,
                               const TargetColumn& target) const {
    const Column& column = *target.column;
    const QByteArray converted =
        storesAsIs(from, column.type)
            ? native
            : storeFunction(column.type) + ('(' + operand + ", " + textLiteral(column.name)) + ')';
    return target.isKey ? keyOf(converted) : converted;
}

QByteArray StoreWriter::keyOf(const QByteArray& native) {
    return storeKeyFunction + ('(' + native + ')');
}

QByteArray StoreWriter::value(const Expression& expression, const TargetColumn& target) {
    if (expression.isNull()) return stored(expressions_.value(expression), {}, target.column->type, target);
    return stored(expressions_.value(expression), expressions_.operand(expression), expression.type, target);
}

QByteArray StoreWriter::value(const QByteArray& native, ColumnType from, const TargetColumn& target) const {
    return stored(native, target_.operand(native, from), from, target);
}

QByteArrayList StoreWriter::conditionsOf(const QByteArray& native, const QByteArray& operand, ColumnType from,
                                         const TargetColumn& target) const {
    QByteArrayList conditions;
    const ColumnType type = target.column->type;
    if (target.isKey) conditions.append('(' + native + " IS NOT NULL)");
    if (!storesAsIs(from, type)) {
        const QByteArray code = QByteArray::number(static_cast<int>(type));
        conditions.append(target_.condition(storableFunction + ('(' + operand + ", " + code) + ')'));
    }
    return conditions;
}

QByteArrayList StoreWriter::conditions(const Expression& expression, const TargetColumn& target) {
    if (expression.isNull()) return conditionsOf(expressions_.value(expression), {}, target.column->type, target);
    return conditionsOf(expressions_.value(expression), expressions_.operand(expression), expression.type, target);
}

QByteArrayList StoreWriter::conditions(const QByteArray& native, ColumnType from, const TargetColumn& target) const {
    return conditionsOf(native, target_.operand(native, from), from, target);
}

} // namespace jet
