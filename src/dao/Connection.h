#pragma once
// What the data layer asks of an engine. One class derived per engine, in a folder of its own.
#include "dao/Constants.h"
#include "dao/RowStore.h"
#include "dao/StoredValue.h"
#include "dao/Transaction.h"
#include "jet/model/Schema.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>
#include <limits>
#include <memory>
#include <span>

namespace jet {
class Target;
}

namespace dao {

/// What a statement may do; the engine refuses the rest, whatever its text says.
enum class Access : quint8 {
    Read,    ///< read the user's tables, call the functions of the dialect
    Write,   ///< the same, and store, change and delete rows
    Define,  ///< make a table
    Internal ///< whatever this layer needs itself
};

/// A prepared statement. Both calls run it to its end and reset it, also where they fail, so that no read lock and
/// no half-read result stays behind.
class Statement {
public:
    virtual ~Statement() = default;
    /// Appends the rows to the store.
    void read(std::span<const StoredValue> parameters, RowStore& rows) {
        readSome(parameters, rows, std::numeric_limits<qsizetype>::max());
    }
    /// The same, but stops after limit rows where as little work was done for them that nothing is lost by beginning
    /// anew. True if these are all rows.
    virtual bool readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype limit) = 0;
    /// Runs an action; the number of rows that it changed.
    virtual qint64 run(std::span<const StoredValue> parameters) = 0;
    /// True once after the engine had to prepare it anew since something about the tables changed.
    virtual bool takeStale() = 0;
    /// NotExpressible where the engine would give something else in place of values of these types.
    virtual void requireTypes(const QList<jet::ColumnType>& /*types*/) {}
};

class PendingRead;
class Substitute;

class Connection {
public:
    virtual ~Connection() = default;

    virtual bool isOpen() const = 0;
    /// Ends it, with an open transaction undone. All its statements are invalid then.
    virtual void close() = 0;
    virtual bool isUpdatable() const = 0;
    /// Whether nothing may be written. What a server does not permit to somebody it refuses by itself, in words of its
    /// own.
    virtual bool isReadOnly() const { return !isUpdatable(); }
    /// How long to wait for another program's lock.
    virtual void setBusyTimeout(int milliseconds) = 0;
    virtual int busyTimeout() const = 0;
    /// Stands before every change: 3027 for a read-only database, 3246 in a doomed transaction; what is still to be
    /// read as it is now is read.
    void requireWritable();
    /// Has pending rows read, for changes that are no writes (a rollback, a script).
    void readPending();
    void addPending(PendingRead* read) { pending_.insert(read); }
    void removePending(PendingRead* read) { pending_.remove(read); }

    /// One statement; 3112 where it reaches beyond its access, 3142 where another one follows.
    virtual std::shared_ptr<Statement> prepare(const QByteArray& native, Access access = Access::Read) = 0;
    /// The same from a cache of the connection, for the few statements that are used over and over.
    virtual std::shared_ptr<Statement> prepared(const QByteArray& native, Access access = Access::Read) = 0;
    /// Runs native statements, several at once allowed.
    virtual void executeScript(const QByteArray& native) = 0;
    /// The same for a table that gets what identifies its rows later.
    virtual void defineTable(const QByteArray& native) { executeScript(native); }
    /// The action, changed so that a row which violates a key or a rule is left out instead of failing.
    virtual QByteArray leavingOutFailedRows(const QByteArray& native) const = 0;

    // Bare commands, for Transaction alone.
    virtual void begin() = 0;
    /// For the transaction of one action alone, which needs no lock beyond its own.
    virtual void beginSingle() { begin(); }
    virtual void commit() = 0;
    virtual void rollback() = 0;
    virtual void savepoint(const QByteArray& name) = 0;
    virtual void release(const QByteArray& name) = 0;
    virtual void rollbackTo(const QByteArray& name) = 0;
    /// False also where the engine gave the transaction up by itself.
    virtual bool inTransaction() const = 0;

    Transaction& transaction() { return transaction_; }

    /// A number that belongs to this one database and is no row of a table: 0 in a new one.
    virtual Long localNumber() = 0;
    virtual void setLocalNumber(Long number) = 0;

    /// Differs after each change that went over this connection, and after each rollback.
    virtual quint64 changeStamp() const = 0;
    /// Whether another connection has stored something since the opening, or since the last call that said so. Neither
    /// waits nor raises: what cannot be told just now, or not within a transaction, the next call tells.
    virtual bool takeChangedByOthers() { return false; }
    /// Whether the server is known to be out of reach. Costs no round trip; the next statement tries anew.
    virtual bool isLost() const { return false; }
    /// Whether what goes to a server and comes from it is encrypted.
    virtual bool isEncrypted() const { return false; }
    /// Numbers the periods in which no other program can change anything, such as a transaction that holds the only
    /// lock for writing; 0 outside of them.
    virtual quint64 exclusivePeriod() const = 0;
    /// Whether a statement that changes a single row of the table leaves nothing behind where it fails.
    virtual bool failsAsAWhole(const QString& table) = 0;

    virtual const jet::Schema& schema() const = 0;
    /// Reads the tables again if they changed since; true if they did.
    virtual bool refreshSchema() = 0;
    /// Whether a prepared action refuses to run (an internal error) where its tables are others than at its
    /// preparation, and a query is stale then, so that nobody need ask beforehand.
    virtual bool noticesOldTables() const { return false; }
    /// Whether a statement costs a way to a server and back, so that many rows in one are worth more than they cost.
    virtual bool readsAhead() const { return false; }
    virtual QStringList tableNames() const = 0;
    /// What a new row of the table holds by itself; takes the next number of a counter for it.
    virtual ColumnValues initialValues(const jet::Table& table) = 0;
    virtual const jet::Target& target() const = 0;
    /// Runs the statements that the engine cannot express; nullptr where it can express all. See Substitute.h.
    virtual Substitute* substitute() { return nullptr; }

private:
    Transaction transaction_{*this};
    QSet<PendingRead*> pending_;
};

} // namespace dao
