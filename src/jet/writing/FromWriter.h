#pragma once
#include "jet/writing/ExpressionWriter.h"

namespace jet {

/// Writes a FROM clause. Engines read joins from left to right; parentheses stay only where the order counts.
class FromWriter {
public:
    FromWriter(const Target& target, const Scope& scope, ExpressionWriter& expressions)
        : target_(target)
        , scope_(scope)
        , expressions_(expressions) {}

    /// The items, with commas between them.
    QByteArray write(const std::vector<FromPtr>& items);
    QByteArray table(const Scope::Source& source) const;

private:
    struct JoinedTable {
        QByteArray native;
        std::vector<const Expression*> conditions;
    };

    QByteArray joinedTable(const Scope::Source& source) const;
    QByteArray item(const FromItem& item);
    QByteArray join(const Join& join);
    QByteArray innerJoins(const FromItem& item);
    void collect(const FromItem& item, std::vector<JoinedTable>& tables);

    const Target& target_;
    const Scope& scope_;
    ExpressionWriter& expressions_;
    bool inParentheses_ = false; ///< of a join that is the second side of another one
};

} // namespace jet
