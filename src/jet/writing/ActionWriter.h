#pragma once
#include "jet/binding/ActionBinder.h"
#include "jet/writing/StoreWriter.h"

namespace jet {

/// Writes one bound action as native text: strictly, and where values may not fit leniently as well.
class ActionWriter {
public:
    explicit ActionWriter(const Target& target)
        : target_(target) {}

    Plan write(const BoundInsert& insert);
    Plan write(const BoundUpdate& update);
    Plan write(const BoundDelete& statement);
    Plan write(const BoundMakeTable& statement);

private:
    Plan finish(StatementKind kind, QByteArray native, const QString& table, const BoundSelect* rows) const;
    QByteArray head(const BoundInsert& insert) const;
    QByteArray values(const BoundInsert& insert);
    QByteArray rows(const BoundInsert& insert);
    QByteArray lenientValues(const BoundInsert& insert);
    QByteArray lenientRows(const BoundInsert& insert);
    struct Texts {
        QByteArray strict, lenient;
    };

    Texts updateTable(const BoundUpdate& update);
    Texts updateJoin(const BoundUpdate& update);
    QByteArray chosen(const BoundSelect& rows, const QByteArrayList& outputs, ExpressionWriter& expressions) const;
    QByteArrayList keys(const BoundSelect& rows, int source, const QByteArray& table) const;

    const Target& target_;
    ParameterList parameters_;
};

} // namespace jet
