#pragma once
#include "base/RunTimeError.h"
#include "dao/Connection.h"

#include <QSet>
#include <QString>
#include <memory>
#include <optional>
#include <sqlite3.h>
#include <utility>

namespace dao {

/// What the statements and functions of one connection share.
class SqliteSession {
public:
    SqliteSession(sqlite3* database, QString name);

    sqlite3* database() const { return database_.get(); }
    const QString& name() const { return name_; } ///< under which it was opened
    bool isOpen() const { return database_ != nullptr; }
    void close() { database_.reset(); }

    /// Raises the error behind a result code; nothing for OK, ROW and DONE.
    void check(int code);
    /// Keeps an error of ours, raised inside a function, until the statement that called it has ended.
    void keepFunctionError(const mkl::RunTimeError& error);

    /// What the statement that is being prepared or run may do.
    Access access() const { return access_; }

    /// How many statements that define tables have run.
    quint64 definitions() const { return definitions_; }
    void countDefinition() { ++definitions_; }

    /// The tables that statements of the dialect may name.
    void setUserTables(const QStringList& names);
    bool isUserTable(QByteArrayView name) const;

    /// Sets the access until its end.
    class AccessScope {
    public:
        AccessScope(SqliteSession& session, Access access)
            : session_(session)
            , former_(std::exchange(session.access_, access)) {}
        ~AccessScope() { session_.access_ = former_; }
        Q_DISABLE_COPY_MOVE(AccessScope)

    private:
        SqliteSession& session_;
        Access former_;
    };

private:
    struct Closer {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };

    std::unique_ptr<sqlite3, Closer> database_;
    QString name_;
    Access access_ = Access::Read;
    quint64 definitions_ = 0;
    QSet<QByteArray> userTables_; ///< in lower case, as far as the engine folds
    std::optional<mkl::RunTimeError> functionError_;
};

} // namespace dao
