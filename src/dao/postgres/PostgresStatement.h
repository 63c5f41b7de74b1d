#pragma once
#include "dao/Connection.h"
#include "dao/postgres/PostgresSchema.h"

namespace dao {

/// What changes whenever a statement has stored something.
using ChangeCount = std::shared_ptr<quint64>;

/// A statement prepared on the server, anew after a lost connection. NotExpressible where the server does not
/// understand it. With guards it notices that its tables have changed: a query gives its rows and is stale, an action
/// is not run and raises an internal error.
class PostgresStatement final : public Statement {
public:
    PostgresStatement(std::shared_ptr<PostgresSession> session, const PostgresSchema& schema, ChangeCount changes,
                      QByteArray native, Access access, PostgresGuards guards);
    ~PostgresStatement() override;

    bool readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype limit) override;
    qint64 run(std::span<const StoredValue> parameters) override;
    bool takeStale() override { return std::exchange(stale_, false); }
    void requireTypes(const QList<jet::ColumnType>& types) override;

private:
    PostgresResult execute(std::span<const StoredValue> parameters, const PostgresRowSink& sink);
    PostgresResult runPrepared(const PostgresValues& values, const PostgresRowSink& sink);
    PostgresResult runOrFollow(const PostgresValues& values, const PostgresRowSink& sink);
    [[noreturn]] void raiseNullCharacter() const;
    PostgresValues bound(std::span<const StoredValue> parameters) const;
    void prepare();
    void requireAccess() const;
    bool catchUp() const;

    std::shared_ptr<PostgresSession> session_;
    const PostgresSchema& schema_;
    ChangeCount changes_;
    QByteArray native_;
    Access access_;
    QByteArray name_;
    PostgresGuards guards_;
    int generation_ = 0;
    bool stale_ = false;
    std::vector<Oid> types_;
    std::vector<bool> untyped_;           ///< columns of the result whose values bear marks
    std::vector<bool> untypedParameters_; ///< and parameters that get them
};

} // namespace dao
