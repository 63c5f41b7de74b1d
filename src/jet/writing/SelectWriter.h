#pragma once
#include "jet/binding/SelectBinder.h"
#include "jet/writing/FromWriter.h"
#include "jet/writing/StoreWriter.h"

namespace jet {

/// Writes a bound SELECT, clause by clause, or several of them joined by UNION.
class SelectWriter {
public:
    /// outer writes the statement around a subquery.
    SelectWriter(const Target& target, const BoundSelect& select, ParameterList& parameters,
                 const ExpressionWriter* outer = nullptr);

    QByteArray write();
    /// The same with its values on their way into these columns. Not for DISTINCT and UNION.
    QByteArray write(const std::vector<TargetColumn>& targets);
    /// The same with output columns that are called c0, c1, …; one of an unknown type is packed.
    QByteArray writeNumbered();
    /// The same with the output columns under their names, for use in another statement.
    QByteArray writeNamed();
    /// The rows of one SELECT in their order with other output columns, native ones; they get the names, if any.
    QByteArray rows(const QByteArrayList& outputs, const QByteArrayList& names = {});

private:
    QByteArrayList showingGroup(QByteArrayList outputs) const;
    QByteArray query(const QByteArrayList& names);
    QByteArray compound(const QByteArrayList& names);
    QByteArray part(const BoundSelect& whole, bool collated, const QByteArrayList& names);
    QByteArrayList outputs(const BoundSelect& whole, bool collated);
    bool hasOneRow() const;
    QByteArray body(const QByteArrayList& outputs);
    bool followsKey(const BoundSelect& whole, const Expression& output) const;
    QByteArray from();
    QByteArray groups();
    QByteArray ranked(const QByteArrayList& outputs, const QByteArrayList& names);
    bool mayBeNull(const Expression& expression) const;
    QByteArrayList orderTerms();
    QByteArrayList settledOrder();
    QByteArray placeTerms();

    const Target& target_;
    const BoundSelect& select_;
    ParameterList& parameters_;
    const ExpressionWriter* outer_;
    ExpressionWriter expressions_;
};

} // namespace jet
