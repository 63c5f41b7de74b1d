#include "dao/sqlite/SqliteSession.h"

#include "dao/sqlite/SqliteErrors.h"

namespace dao {

SqliteSession::SqliteSession(sqlite3* database, QString name)
    : database_(database)
    , name_(std::move(name)) {}

void SqliteSession::check(int code) {
    const auto functionError = std::exchange(functionError_, std::nullopt);
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
    if (functionError) throw *functionError;
    raiseSqliteError(database(), code, name_);
}

void SqliteSession::setUserTables(const QStringList& names) {
    userTables_.clear();
    for (const QString& name : names)
        userTables_.insert(name.toUtf8().toLower());
}

bool SqliteSession::isUserTable(QByteArrayView name) const {
    return userTables_.contains(name.toByteArray().toLower());
}

void SqliteSession::keepFunctionError(const mkl::RunTimeError& error) {
    functionError_ = error;
}

} // namespace dao
