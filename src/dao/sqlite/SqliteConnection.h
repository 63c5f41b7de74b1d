#pragma once
#include "dao/Connection.h"
#include "dao/LruCache.h"
#include "dao/sqlite/SqliteNewRow.h"
#include "dao/sqlite/SqliteSchema.h"
#include "dao/sqlite/SqliteSession.h"
#include "dao/sqlite/SqliteTarget.h"

#include <QHash>
#include <QSet>
#include <optional>

namespace dao {

inline size_t qHash(Access access, size_t seed = 0) {
    return ::qHash(static_cast<quint8>(access), seed);
}

class SqliteConnection final : public Connection {
public:
    /// Takes over a database just opened: settings, functions, tables.
    SqliteConnection(std::shared_ptr<SqliteSession> session, int busyTimeoutMilliseconds);

    bool isOpen() const override { return session_->isOpen(); }
    void close() override;
    bool isUpdatable() const override;
    void setBusyTimeout(int milliseconds) override;
    int busyTimeout() const override { return busyTimeout_; }

    std::shared_ptr<Statement> prepare(const QByteArray& native, Access access) override;
    std::shared_ptr<Statement> prepared(const QByteArray& native, Access access) override;
    void executeScript(const QByteArray& native) override;
    QByteArray leavingOutFailedRows(const QByteArray& native) const override;

    void begin() override;
    void commit() override;
    void rollback() override;
    void savepoint(const QByteArray& name) override;
    void release(const QByteArray& name) override;
    void rollbackTo(const QByteArray& name) override;
    bool inTransaction() const override;
    Long localNumber() override;
    void setLocalNumber(Long number) override;
    quint64 changeStamp() const override;
    bool takeChangedByOthers() override;
    quint64 exclusivePeriod() const override { return inTransaction() ? exclusivePeriod_ : 0; }
    bool failsAsAWhole(const QString& table) override;

    const jet::Schema& schema() const override { return schema_; }
    bool refreshSchema() override;
    QStringList tableNames() const override { return schema_.tableNames(); }
    ColumnValues initialValues(const jet::Table& table) override;
    const jet::Target& target() const override { return target_; }

private:
    /// What was asked about tables within an exclusive period, and holds as long.
    struct KnownTables {
        quint64 period = 0;
        std::optional<QSet<QString>> withTriggers;               ///< folded names
        QHash<QString, std::shared_ptr<const RowStore>> columns; ///< for new rows, by table
        QHash<QString, SqliteCounter> counters;                  ///< likewise
        std::optional<quint64> schemaRead;                       ///< definitions that the schema shows
    };

    KnownTables& known();
    void protect();
    void requireFile() const;
    void command(const QByteArray& native);
    bool readSchema();
    qint64 readSchemaVersion();
    std::optional<int> dataVersion();

    std::shared_ptr<SqliteSession> session_;
    LruCache<std::pair<QByteArray, Access>, std::shared_ptr<Statement>> statements_{64};
    SqliteSchema schema_;
    qint64 schemaVersion_ = -1;
    SqliteTarget target_;
    std::optional<int> dataVersion_; ///< differs after each change by another connection
    quint64 rollbacks_ = 0;
    quint64 begins_ = 0;
    quint64 exclusivePeriod_ = 0; ///< the number of the transaction that begin() has begun, for writing
    KnownTables known_;
    int busyTimeout_ = 0;
};

} // namespace dao
