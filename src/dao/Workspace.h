#pragma once
#include "base/Ref.h"
#include "dao/Database.h"

#include <QByteArray>
#include <QString>
#include <memory>

namespace dao {

class WorkspaceNotifier;

/// How a database is opened.
struct OpenOptions {
    bool readOnly = false;
    int busyTimeoutMilliseconds = 5000; ///< how long to wait for another program's lock; see Workspace too
    QByteArray vfs = {};                ///< file layer of the engine by name; empty for its default
    QString password = {};              ///< for a server; kept in memory alone, to connect again after a loss
};

/// Holds the transactions of the databases that were opened through it. BeginTrans nests. What is not committed when
/// the last reference to it goes is undone.
class Workspace final : public mkl::RefCounted {
public:
    Workspace();
    ~Workspace() override;

    /// Opens an existing file. 3024 no such file, 3051 not readable, 3343 or 3049 no database of ours or damaged.
    /// Or a database on a server (see ServerAddress.h): 3024 no such database, 3029 the user is not let in, 3031 wrong
    /// password, 3148 a password is needed, 3151 no server there, 3005 or 3147 not an address to be used.
    mkl::Ref<Database> OpenDatabase(const QString& name, const OpenOptions& options = {});
    /// Makes a new, empty file and opens it; 3204 if it exists.
    mkl::Ref<Database> CreateDatabase(const QString& name);

    /// Takes the write lock of all its databases at once, or of none: 3260 where another program holds one longer than
    /// the busy timeout. Within a transaction it begins an inner one, whose commit is final only with the outermost.
    void BeginTrans();
    /// 3034 without a transaction, 3246 if it is doomed. Databases are committed one after the other: where one of them
    /// fails the former ones are stored, and the transaction stays open for another attempt or Rollback.
    void CommitTrans();
    void Rollback(); ///< 3034 without a transaction
    int transactionDepth() const;
    /// The engine gave the transaction up after an error (a full disk, an interrupt). Every write and CommitTrans are
    /// error 3246 until Rollback; reading shows what is stored.
    bool isDoomed() const;

    /// How long to wait for another program's lock: of all its databases, and of those opened later without a time of
    /// their own. 5 for a negative time.
    void setBusyTimeout(Long milliseconds);
    Long BusyTimeout() const;

    WorkspaceNotifier& notifier() const;

private:
    friend class TransactionWatch;

    struct Data;
    std::unique_ptr<Data> d_;
    int watches_ = 0;
};

/// Entry to the data layer.
class DBEngine {
public:
    static mkl::Ref<Workspace> CreateWorkspace();
    /// Whether the name is the address of a database on a server (postgresql://...), and no file.
    static bool isServer(const QString& name);
};

} // namespace dao
