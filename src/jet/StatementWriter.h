#pragma once
#include "jet/ActionBinder.h"
#include "jet/FromWriter.h"

namespace jet {

/// The literals that the select's structure rests on, each once.
QList<FixedLiteral> fixedLiteralsOf(const BoundSelect& select);

/// Writes one bound statement as native text, with what the plan tells about it.
class StatementWriter {
public:
    explicit StatementWriter(const Target& target)
        : target_(target) {}

    Plan write(const BoundSelect& select);
    Plan write(const BoundInsert& insert);
    Plan write(const BoundUpdate& update);
    Plan write(const BoundDelete& statement);

private:
    Plan finish(StatementKind kind, QByteArray native, const QString& table) const;
    QByteArray insertedValues(const BoundInsert& insert);
    QByteArray where(const Expression* condition, ExpressionWriter& expressions) const;

    const Target& target_;
    ParameterList parameters_;
};

} // namespace jet
