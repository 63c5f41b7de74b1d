#pragma once
#include "dao/Connection.h"
#include "dao/LruCache.h"
#include "dao/postgres/PostgresLocalRows.h"
#include "dao/postgres/PostgresSchema.h"
#include "dao/postgres/PostgresStatement.h"
#include "dao/postgres/PostgresTarget.h"

namespace dao {

class PostgresConnection final : public Connection {
public:
    /// Takes over a connection just made: settings, functions, tables.
    PostgresConnection(std::shared_ptr<PostgresSession> session, bool readOnly, int busyTimeoutMilliseconds);

    bool isOpen() const override { return session_->isOpen(); }
    void close() override;
    bool isUpdatable() const override { return !readOnly_ && mayWrite_; }
    bool isReadOnly() const override { return readOnly_; }
    void setBusyTimeout(int milliseconds) override;
    int busyTimeout() const override { return busyTimeout_; }

    std::shared_ptr<Statement> prepare(const QByteArray& native, Access access) override;
    std::shared_ptr<Statement> prepared(const QByteArray& native, Access access) override;
    void executeScript(const QByteArray& native) override;
    void defineTable(const QByteArray& native) override;
    QByteArray leavingOutFailedRows(const QByteArray& native) const override;

    void begin() override;
    void beginSingle() override { session_->begin(); }
    void commit() override;
    void rollback() override;
    void savepoint(const QByteArray& name) override;
    void release(const QByteArray& name) override;
    void rollbackTo(const QByteArray& name) override;
    bool inTransaction() const override { return session_->inTransaction(); }
    Long localNumber() override;
    void setLocalNumber(Long number) override;
    quint64 changeStamp() const override { return *changes_; }
    quint64 exclusivePeriod() const override { return 0; }
    bool noticesOldTables() const override { return true; }
    bool takeChangedByOthers() override { return session_->takeNotices(); }
    bool isLost() const override { return session_->isLost(); }
    bool isEncrypted() const override { return session_->isEncrypted(); }
    bool readsAhead() const override { return true; }
    bool failsAsAWhole(const QString& /*table*/) override { return true; }

    const jet::Schema& schema() const override { return schema_; }
    bool refreshSchema() override;
    QStringList tableNames() const override { return schema_.tableNames(); }
    ColumnValues initialValues(const jet::Table& table) override;
    const jet::Target& target() const override { return target_; }
    Substitute* substitute() override { return &localRows_; }

private:
    void applySettings();
    std::shared_ptr<Statement> make(const QByteArray& native, Access access, PostgresGuards guards);
    PostgresGuards guardsOf(const QByteArray& native);
    StoredValue valueOf(const QByteArray& expression);
    std::shared_ptr<const RowStore> defaultsOf(const jet::Table& table);
    qint64 takeCounter(const jet::Table& table, const jet::Column& column);

    std::shared_ptr<PostgresSession> session_;
    ChangeCount changes_ = std::make_shared<quint64>(0);
    bool readOnly_ = false;
    bool mayWrite_ = true; ///< as of the opening; the server itself decides
    int busyTimeout_ = 0;
    LruCache<std::pair<QByteArray, int>, std::shared_ptr<Statement>> statements_{64};
    PostgresSchema schema_;
    QByteArray schemaStamp_;
    QHash<QString, std::shared_ptr<PostgresGuard>> guards_; ///< by table
    quint64 guardCount_ = 0;
    struct Counter {
        QByteArray sequence;
        quint64 settledIn = 0; ///< the transaction in which it was seen to be beyond all numbers
    };
    QHash<QString, Counter> counters_;                   ///< by table, of which each has one at most
    QHash<QString, std::shared_ptr<RowStore>> defaults_; ///< columns and what a new row has there, by table
    PostgresTarget target_;
    PostgresLocalRows localRows_;
};

} // namespace dao
