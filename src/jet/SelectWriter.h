#pragma once
#include "jet/FromWriter.h"
#include "jet/SelectBinder.h"
#include "jet/StoreWriter.h"

namespace jet {

/// Writes a bound SELECT, clause by clause.
class SelectWriter {
public:
    SelectWriter(const Target& target, const BoundSelect& select, ParameterList& parameters);

    QByteArray write();
    /// The same with its values on their way into these columns.
    QByteArray write(const std::vector<TargetColumn>& targets);
    /// The same with outputs that are called c0, c1, …
    QByteArray writeNamed();
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
