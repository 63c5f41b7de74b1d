#pragma once
#include "dao/Connection.h"
#include "dao/sqlite/SqliteSession.h"

namespace dao {

class SqliteStatement final : public Statement {
public:
    SqliteStatement(std::shared_ptr<SqliteSession> session, const QByteArray& native, Access access);

    bool readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype limit) override;
    qint64 run(std::span<const StoredValue> parameters) override;
    bool takeStale() override;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };

    void requireOneStatement(const char* rest) const;
    void bind(std::span<const StoredValue> parameters);
    int bindOne(int number, const StoredValue& value);
    bool isCheapSoFar(qsizetype rows) const;
    void appendRow(RowStore& rows) const;

    std::shared_ptr<SqliteSession> session_;
    Access access_;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

} // namespace dao
