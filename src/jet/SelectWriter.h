#pragma once
#include "jet/FromWriter.h"
#include "jet/SelectBinder.h"

namespace jet {

/// Writes a bound SELECT, clause by clause.
class SelectWriter {
public:
    SelectWriter(const Target& target, const BoundSelect& select, ParameterList& parameters);

    QByteArray write();
    /// The same as the source of an INSERT into columns of these types.
    QByteArray write(const QList<ColumnType>& storedTypes);
    /// The same rows in the same order with other output columns, native ones.
    QByteArray rows(const QByteArrayList& outputs);

private:
    QByteArrayList outputs();
    QByteArray body(const QByteArrayList& outputs);
    QByteArray ranked(const QByteArrayList& outputs);
    QByteArray orderTerms();

    const Target& target_;
    const BoundSelect& select_;
    ExpressionWriter expressions_;
};

} // namespace jet
