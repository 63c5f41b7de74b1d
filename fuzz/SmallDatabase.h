#pragma once
// A database of few rows and all types, in a file that goes with the process.
#include "dao/Connection.h"
#include "dao/Database.h"

#include <QTemporaryDir>
#include <memory>

namespace fuzz {

class SmallDatabase {
public:
    SmallDatabase();

    dao::Connection& connection() { return *connection_; }
    dao::Database& database() { return *database_; }
    /// How many times the tables are named in a native text: a measure of the rows that it may come to.
    static qsizetype tablesIn(const QByteArray& native);

private:
    QTemporaryDir folder_;
    std::shared_ptr<dao::Connection> connection_;
    mkl::Ref<dao::Database> database_;
};

} // namespace fuzz
