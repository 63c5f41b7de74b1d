#pragma once
#include "base/Ref.h"
#include "dao/Database.h"

#include <QByteArray>
#include <QString>
#include <memory>

namespace dao {

/// How a database is opened.
struct OpenOptions {
    bool readOnly = false;
    int busyTimeoutMilliseconds = 5000; ///< how long to wait for another program's lock
    QByteArray vfs = {};                ///< file layer of the engine by name; empty for its default
};

/// Holds the transactions of the databases that were opened through it. BeginTrans nests. What is not committed when
/// the last reference to it goes is undone.
class Workspace final : public mkl::RefCounted {
public:
    Workspace();
    ~Workspace() override;

    /// Opens an existing file. 3024 no such file, 3051 not readable, 3343 or 3049 no database of ours or damaged.
    mkl::Ref<Database> OpenDatabase(const QString& name, const OpenOptions& options = {});
    /// Makes a new, empty file and opens it; 3204 if it exists.
    mkl::Ref<Database> CreateDatabase(const QString& name);

    void BeginTrans();
    void CommitTrans(); ///< 3034 without a transaction
    void Rollback();    ///< 3034 without a transaction
    int transactionDepth() const;

private:
    struct Data;
    std::unique_ptr<Data> d_;
};

/// Entry to the data layer.
class DBEngine {
public:
    static mkl::Ref<Workspace> CreateWorkspace();
};

} // namespace dao
