#pragma once
#include "dao/Connection.h"
#include "dao/postgres/PostgresSession.h"

namespace dao {

/// What changes whenever a statement has stored something.
using ChangeCount = std::shared_ptr<quint64>;

/// A statement prepared on the server, anew after a lost connection. NotExpressible where the server does not
/// understand it.
class PostgresStatement final : public Statement {
public:
    PostgresStatement(std::shared_ptr<PostgresSession> session, ChangeCount changes, QByteArray native, Access access);
    ~PostgresStatement() override;

    bool readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype limit) override;
    qint64 run(std::span<const StoredValue> parameters) override;
    bool takeStale() override { return false; }
    void requireTypes(const QList<jet::ColumnType>& types) override;

private:
    PostgresResult execute(std::span<const StoredValue> parameters);
    void prepare();
    void requireAccess() const;
    bool catchUp() const;

    std::shared_ptr<PostgresSession> session_;
    ChangeCount changes_;
    QByteArray native_;
    Access access_;
    QByteArray name_;
    int generation_ = 0;
    std::vector<Oid> types_;
};

} // namespace dao
