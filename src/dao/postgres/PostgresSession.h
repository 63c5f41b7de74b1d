#pragma once
#include "dao/ServerAddress.h"
#include "dao/postgres/PostgresConnecting.h"
#include "dao/postgres/PostgresErrors.h"
#include "dao/postgres/PostgresPipeline.h"
#include "dao/postgres/PostgresSavepoints.h"

#include <QByteArrayList>
#include <QString>
#include <span>

namespace dao {

/// A statement that the server keeps and that fails once the columns of a table are no longer those of its preparation.
struct PostgresGuard {
    QByteArray statement; ///< its name
    QByteArray native;
    int generation = 0;   ///< of the connection that has it prepared
    quint64 lockedIn = 0; ///< the transaction that asked it
};
using PostgresGuards = std::vector<std::shared_ptr<PostgresGuard>>;

/// A prepared statement.
struct PostgresCall {
    const QByteArray& statement; ///< its name
    const QByteArray& native;
};

/// What the statements of one connection share. A lost connection is error 3043; it is made anew by the next call
/// outside of a transaction.
class PostgresSession {
public:
    PostgresSession(const QByteArray& url, const ServerAddress& address, const QString& password);

    const QString& name() const { return context_.name; }
    bool isOpen() const { return connection_ != nullptr; }
    bool isLost() const { return isOpen() && PQstatus(raw()) != CONNECTION_OK; }
    bool isEncrypted() const { return isOpen() && PQsslInUse(raw()) == 1; }
    void close() { connection_.reset(); }
    /// True once after the server told that another connection has changed rows, or after it could not tell. Without
    /// a round trip.
    bool takeNotices();

    /// Told whenever the connection has been made anew, and asked whether it may be.
    void setReconnecting(std::function<bool()> mayReconnect, std::function<void()> reconnected);
    /// Asked about the table and the column for which a Null was refused.
    void setKeyColumns(std::function<bool(const QString&, const QString&)> isKeyColumn);
    /// How long to wait, in milliseconds, for a server that is gone in the middle of a COMMIT.
    void setPatience(int milliseconds) { patience_ = milliseconds; }
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
    PostgresResult run(const PostgresCall& call, const PostgresValues& values, const PostgresGuards& guards,
                       const PostgresRowSink& sink);
    /// Drops a prepared statement with the next call.
    void forget(const QByteArray& statement, int generation);

    /// Begins a transaction with the next statement, in its round trip.
    void begin();
    /// Begins a transaction now and takes the lock that all such transactions of the database take, so that they follow
    /// one another as in a file.
    void beginLocked();
    void savepoint(const QByteArray& name);
    void release(const QByteArray& name);
    void rollbackTo(const QByteArray& name);
    /// Raises where the server has given it up. Where its answer is lost the server is asked what has become of the
    /// transaction; an error tells where that cannot be known.
    void commit();
    void rollback();
    /// Differs where the locks of the transaction may have been given up in between.
    quint64 lockPeriod() const { return locks_; }
    bool inTransaction() const { return begins_ || isInTransaction(); }

private:
    void requireConnection();
    void reconnect();
    bool isCommitted();
    PostgresResult asked(const QByteArray& native);
    void dropForgotten();
    void sendBegin();
    void sendSavepoints();
    void openPoint(PostgresPipeline& pipeline);
    void endLocks() { ++locks_; }
    PostgresGuards prepareGuards(const PostgresGuards& guards);
    bool isInTransaction() const;
    PGconn* raw() const { return connection_.get(); }
    /// With the statement an error says which right it lacked.
    PostgresResult checked(PGresult* result, const QByteArray& native = {});
    void undoFailed(bool hasBegun);
    void undoOwn();

    PostgresErrorContext context_;
    PostgresHandle connection_;
    int generation_ = 1;
    bool begins_ = false;
    PostgresSavepoints savepoints_;
    quint64 locks_ = 1; ///< counts the times for which the server keeps locks
    bool noticed_ = false;
    int patience_ = 0;
    QByteArray transactionNumber_; ///< of the server's; empty where it is not known
    std::function<bool()> mayReconnect_;
    std::function<void()> reconnected_;
    QByteArrayList forgotten_;
};

} // namespace dao
