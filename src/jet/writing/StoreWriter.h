#pragma once
#include "jet/binding/TargetColumn.h"
#include "jet/writing/ExpressionWriter.h"

namespace jet {

/// Writes values on their way into columns. In the lenient form of a statement the rows are chosen by conditions()
/// beforehand, in the strict one a value that does not fit raises 3421, 6 or 3058.
class StoreWriter {
public:
    StoreWriter(const Target& target, ExpressionWriter& expressions)
        : target_(target)
        , expressions_(expressions) {}

    QByteArray value(const Expression& expression, const TargetColumn& target);
    /// The same for a native value of that type.
    QByteArray value(const QByteArray& native, ColumnType from, const TargetColumn& target) const;

    /// The value where it is no Null; 3058 for Null.
    static QByteArray keyOf(const QByteArray& native);

    /// What must hold for the value to be stored; empty if nothing can be wrong with it.
    QByteArrayList conditions(const Expression& expression, const TargetColumn& target);
    QByteArrayList conditions(const QByteArray& native, ColumnType from, const TargetColumn& target) const;

private:
    QByteArray stored(const QByteArray& native, const QByteArray& operand, ColumnType from,
                      const TargetColumn& target) const;
    QByteArrayList conditionsOf(const QByteArray& native, const QByteArray& operand, ColumnType from,
                                const TargetColumn& target) const;

    const Target& target_;
    ExpressionWriter& expressions_;
};

} // namespace jet
