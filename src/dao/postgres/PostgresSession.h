#pragma once
#include "base/RunTimeError.h"

#include <QByteArrayList>
#include <QString>
#include <functional>
#include <libpq-fe.h>
#include <memory>
#include <vector>

namespace dao {

struct PostgresResultCloser {
    void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresResult = std::unique_ptr<PGresult, PostgresResultCloser>;

/// Values bound to a statement, as the server takes them.
struct PostgresValues {
    std::vector<QByteArray> kept; ///< texts made for numbers
    std::vector<const char*> values;
    std::vector<int> lengths;
    std::vector<int> formats;
};

/// What the statements of one connection share. A lost connection is error 3043; it is made anew by the next call
/// outside of a transaction.
class PostgresSession {
public:
    PostgresSession(QByteArray url, QString name);

    const QString& name() const { return name_; }
    bool isOpen() const { return connection_ != nullptr; }
    void close() { connection_.reset(); }

    /// Told whenever the connection has been made anew, and asked whether it may be.
    void setReconnecting(std::function<bool()> mayReconnect, std::function<void()> reconnected);
    /// Counts the connections made: what the server keeps for one is gone with it.
    int generation() const { return generation_; }

    /// Statements without parameters, several allowed; the result of the last one, texts in it.
    PostgresResult script(const QByteArray& native);
    /// Inside a transaction under a savepoint, so that a failure undoes nothing else.
    PostgresResult savedScript(const QByteArray& native);
    /// Gives the number of its result columns' types.
    PostgresResult prepare(const QByteArray& statement, const QByteArray& native);
    /// Values in binary; inside a transaction under a savepoint, all in one round trip.
    PostgresResult run(const QByteArray& statement, const PostgresValues& values);
    /// Drops a prepared statement with the next call.
    void forget(const QByteArray& statement, int generation);

    bool inTransaction() const;

private:
    struct Closer {
        void operator()(PGconn* connection) const { PQfinish(connection); }
    };

    void connect();
    void requireConnection();
    void dropForgotten();
    PGconn* raw() const { return connection_.get(); }
    PostgresResult checked(PGresult* result);
    PostgresResult runPlain(const QByteArray& statement, const PostgresValues& values);
    PostgresResult runSaved(const QByteArray& statement, const PostgresValues& values);
    void undoSavepoint();

    QByteArray url_;
    QString name_;
    std::unique_ptr<PGconn, Closer> connection_;
    int generation_ = 0;
    std::function<bool()> mayReconnect_;
    std::function<void()> reconnected_;
    QByteArrayList forgotten_;
};

} // namespace dao
