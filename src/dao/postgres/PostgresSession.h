#pragma once
#include "dao/postgres/PostgresErrors.h"
#include "dao/postgres/PostgresPipeline.h"

#include <QByteArrayList>
#include <QString>
#include <span>

namespace dao {

/// A statement that the server keeps and that fails once the columns of a table are no longer those of its preparation.
struct PostgresGuard {
    QByteArray statement; ///< its name
    QByteArray native;
    int generation = 0; ///< of the connection that has it prepared
};
using PostgresGuards = std::vector<std::shared_ptr<PostgresGuard>>;

/// What the statements of one connection share. A lost connection is error 3043; it is made anew by the next call
/// outside of a transaction.
class PostgresSession {
public:
    PostgresSession(QByteArray url, QString name);

    const QString& name() const { return context_.name; }
    bool isOpen() const { return connection_ != nullptr; }
    void close() { connection_.reset(); }

    /// Told whenever the connection has been made anew, and asked whether it may be.
    void setReconnecting(std::function<bool()> mayReconnect, std::function<void()> reconnected);
    /// Asked about the table and the column for which a Null was refused.
    void setKeyColumns(std::function<bool(const QString&, const QString&)> isKeyColumn);
    /// Counts the connections made: what the server keeps for one is gone with it.
    int generation() const { return generation_; }
    /// The same once a lost connection has been made anew.
    int connectedGeneration();

    /// Statements without parameters, several allowed; the result of the last one, texts in it.
    PostgresResult script(const QByteArray& native);
    /// Inside a transaction under a savepoint, so that a failure undoes nothing else.
    PostgresResult savedScript(const QByteArray& native);
    /// Gives the number of its result columns' types.
    PostgresResult prepare(const QByteArray& statement, const QByteArray& native);
    /// Values in binary, rows to the sink; inside a transaction under a savepoint; all in one round trip. Nothing where
    /// a guard has failed: the statement was not run then.
    PostgresResult run(const QByteArray& statement, const PostgresValues& values, const PostgresGuards& guards,
                       const PostgresRowSink& sink);
    /// Drops a prepared statement with the next call.
    void forget(const QByteArray& statement, int generation);

    /// Begins a transaction with the next statement, in its round trip.
    void begin();
    void savepoint(const QByteArray& name);
    /// Raises where the server has given it up.
    void commit();
    void rollback();
    bool inTransaction() const { return begins_ || isInTransaction(); }

private:
    struct Closer {
        void operator()(PGconn* connection) const { PQfinish(connection); }
    };

    void connect();
    void requireConnection();
    void dropForgotten();
    void sendBegin();
    void prepareGuards(const PostgresGuards& guards);
    bool isInTransaction() const;
    PGconn* raw() const { return connection_.get(); }
    PostgresResult checked(PGresult* result);
    void undoFailed(bool hasBegun);

    QByteArray url_;
    PostgresErrorContext context_;
    std::unique_ptr<PGconn, Closer> connection_;
    int generation_ = 0;
    bool begins_ = false;
    std::function<bool()> mayReconnect_;
    std::function<void()> reconnected_;
    QByteArrayList forgotten_;
};

} // namespace dao
