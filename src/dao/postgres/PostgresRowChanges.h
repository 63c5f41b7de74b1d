#pragma once
#include "dao/Connection.h"

#include <QMap>

namespace dao {

/// What an action changes among copied rows, and the same done on the server.
class PostgresRowChanges {
public:
    /// native is the action: its table is the first one that it names.
    PostgresRowChanges(Connection& server, Connection& memory, const QByteArray& native,
                       const std::vector<const jet::Table*>& tables);

    void noteBefore();
    /// All changes or none: what the server refuses is an error. With lenient such rows are left out; their number.
    qint64 carryOver(bool lenient);

private:
    using Row = QList<StoredValue>;
    using Rows = QMap<qint64, Row>; ///< by their identity in memory

    Rows read() const;
    QByteArray condition(int firstParameter) const;
    Row keyOf(qint64 identity) const;
    void remove(qint64 identity);
    void change(qint64 identity, const Row& row);
    void insert(const Row& row);

    Connection& server_;
    Connection& memory_;
    const jet::Table* table_ = nullptr;
    QSet<int> given_; ///< columns that an INSERT names
    Rows before_;
};

} // namespace dao
