#pragma once
#include "jet/binding/SelectBinder.h"
#include "jet/writing/ExpressionWriter.h"

namespace jet {

/// The literals that the select's structure rests on, each once.
QList<FixedLiteral> fixedLiteralsOf(const BoundSelect& select);

/// Writes one bound SELECT as native text, with what the plan tells about it.
class StatementWriter {
public:
    explicit StatementWriter(const Target& target)
        : target_(target) {}

    Plan write(const BoundSelect& select);

private:
    Plan finish(StatementKind kind, QByteArray native, const QString& table) const;

    const Target& target_;
    ParameterList parameters_;
};

} // namespace jet
