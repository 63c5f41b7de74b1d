#include "dao/sqlite/SqliteConnection.h"

#include "dao/Errors.h"
#include "dao/sqlite/SqliteAuthorizer.h"
#include "dao/sqlite/SqliteFaults.h"
#include "dao/sqlite/SqliteFunctions.h"
#include "dao/sqlite/SqliteStatement.h"

namespace dao {

SqliteConnection::SqliteConnection(std::shared_ptr<SqliteSession> session, int busyTimeoutMilliseconds)
    : session_(std::move(session)) {
    setBusyTimeout(busyTimeoutMilliseconds);
    protect();
    SqliteFunctions::registerAll(*session_);
    SqliteAuthorizer::limit(*session_);
    SqliteAuthorizer::watch(*session_);
    refreshSchema();
    dataVersion_ = dataVersion();
}

// A file may come from anywhere, so what stands in its schema gets no more rights than a statement of ours.
void SqliteConnection::protect() {
    sqlite3* database = session_->database();
    sqlite3_extended_result_codes(database, 1);
    const auto set = [&](int setting, int value) {
        session_->check(sqlite3_db_config(database, setting, value, nullptr));
    };
    set(SQLITE_DBCONFIG_ENABLE_FKEY, 1);
    set(SQLITE_DBCONFIG_DEFENSIVE, 1);
    set(SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0);
    set(SQLITE_DBCONFIG_DQS_DML, 0);
    set(SQLITE_DBCONFIG_DQS_DDL, 0);
    set(SQLITE_DBCONFIG_ENABLE_QPSG, 1); // a cached statement is not planned anew for each value
}

void SqliteConnection::setBusyTimeout(int milliseconds) {
    session_->check(sqlite3_busy_timeout(session_->database(), milliseconds));
    setLockWait(*session_);
    busyTimeout_ = milliseconds;
}

void SqliteConnection::close() {
    statements_.clear();
    session_->close();
}

bool SqliteConnection::isUpdatable() const {
    return sqlite3_db_readonly(session_->database(), "main") == 0;
}

std::shared_ptr<Statement> SqliteConnection::prepare(const QByteArray& native, Access access) {
    return std::make_shared<SqliteStatement>(session_, native, access);
}

std::shared_ptr<Statement> SqliteConnection::prepared(const QByteArray& native, Access access) {
    const std::pair key(native, access);
    if (const auto* known = statements_.find(key)) return *known;
    return statements_.insert(key, prepare(native, access));
}

void SqliteConnection::executeScript(const QByteArray& native) {
    const SqliteSession::AccessScope scope(*session_, Access::Internal);
    known_ = {};
    session_->check(sqlite3_exec(session_->database(), native.constData(), nullptr, nullptr, nullptr));
}

QByteArray SqliteConnection::leavingOutFailedRows(const QByteArray& native) const {
    for (const QByteArrayView verb : {QByteArrayView("INSERT "), QByteArrayView("UPDATE ")})
        if (native.startsWith(verb)) return verb.toByteArray() + "OR IGNORE " + native.mid(verb.size());
    return native;
}

void SqliteConnection::command(const QByteArray& native) {
    prepared(native, Access::Internal)->run({});
}

// The lock for writing is taken at once: a conflict shows before the first row and not in the middle.
void SqliteConnection::begin() {
    const bool writes = isUpdatable();
    if (writes) requireFile();
    exclusivePeriod_ = 0;
    command(writes ? "BEGIN IMMEDIATE" : "BEGIN");
    if (writes) exclusivePeriod_ = ++begins_;
}

void SqliteConnection::commit() {
    if (isUpdatable()) requireFile();
    command("COMMIT");
    exclusivePeriod_ = 0;
}

// A file that somebody deleted or replaced goes on for whoever has it open, and what is stored in it is lost unseen.
void SqliteConnection::requireFile() const {
    int hasMoved = 0;
    sqlite3_file_control(session_->database(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
    if (hasMoved != 0) mkl::throwError(err::DiskError, {session_->name()});
}

void SqliteConnection::rollback() {
    ++rollbacks_;
    command("ROLLBACK");
    exclusivePeriod_ = 0;
}

void SqliteConnection::savepoint(const QByteArray& name) {
    command("SAVEPOINT " + name);
}

void SqliteConnection::release(const QByteArray& name) {
    command("RELEASE " + name);
}

void SqliteConnection::rollbackTo(const QByteArray& name) {
    ++rollbacks_;
    known_ = {}; // tables and numbers go back too
    command("ROLLBACK TO " + name);
}

bool SqliteConnection::inTransaction() const {
    return sqlite3_get_autocommit(session_->database()) == 0;
}

Long SqliteConnection::localNumber() {
    RowStore row;
    prepared("PRAGMA user_version", Access::Internal)->read({}, row);
    return static_cast<Long>(row.value(0, 0).integer);
}

// A setting takes no parameter.
void SqliteConnection::setLocalNumber(Long number) {
    prepare("PRAGMA user_version = " + QByteArray::number(number), Access::Internal)->run({});
}

quint64 SqliteConnection::changeStamp() const {
    return static_cast<quint64>(sqlite3_total_changes64(session_->database())) + rollbacks_;
}

bool SqliteConnection::takeChangedByOthers() {
    if (inTransaction()) return false; // which sees the file as it was
    const std::optional<int> version = dataVersion();
    if (!version || version == dataVersion_) return false;
    return std::exchange(dataVersion_, version).has_value();
}

// No statement of ours: it must neither wait for a lock nor fail where another statement would.
std::optional<int> SqliteConnection::dataVersion() {
    sqlite3* const database = session_->database();
    std::optional<int> version;
    const auto take = [](void* result, int, char** values, char**) {
        *static_cast<std::optional<int>*>(result) = QByteArray(values[0]).toInt();
        return 0;
    };
    const SqliteSession::AccessScope scope(*session_, Access::Internal);
    sqlite3_busy_timeout(database, 0);
    const int code = sqlite3_exec(database, "PRAGMA data_version", take, &version, nullptr);
    setBusyTimeout(busyTimeout_);
    return code == SQLITE_OK ? version : std::nullopt;
}

SqliteConnection::KnownTables& SqliteConnection::known() {
    if (const quint64 period = exclusivePeriod(); known_.period != period) {
        known_ = {};
        known_.period = period;
    }
    return known_;
}

// What a trigger did before it failed may stay.
bool SqliteConnection::failsAsAWhole(const QString& table) {
    if (exclusivePeriod() == 0) return false;
    std::optional<QSet<QString>>& withTriggers = known().withTriggers;
    if (!withTriggers) {
        RowStore rows;
        prepared("SELECT DISTINCT tbl_name FROM sqlite_master WHERE type = 'trigger'", Access::Internal)
            ->read({}, rows);
        withTriggers.emplace();
        for (qsizetype row = 0; row < rows.size(); ++row)
            withTriggers->insert(QString::fromUtf8(rows.value(row, 0).bytes).toCaseFolded());
    }
    return !withTriggers->contains(table.toCaseFolded());
}

ColumnValues SqliteConnection::initialValues(const jet::Table& table) {
    if (exclusivePeriod() == 0) {
        SqliteNewRow newRow(*this, *session_, table);
        return newRow.values(newRow.columns());
    }
    SqliteNewRow newRow(*this, *session_, table, &known().counters[table.name]);
    std::shared_ptr<const RowStore>& columns = known().columns[table.name];
    if (!columns) columns = std::make_shared<RowStore>(newRow.columns());
    return newRow.values(*columns);
}

// As long as nobody else can define anything it is what we have made of it.
bool SqliteConnection::refreshSchema() {
    const bool isExclusive = exclusivePeriod() != 0;
    if (isExclusive && known().schemaRead == session_->definitions()) return false;
    const bool hasChanged = readSchema();
    if (isExclusive) known().schemaRead = session_->definitions();
    return hasChanged;
}

bool SqliteConnection::readSchema() {
    const qint64 version = readSchemaVersion();
    if (version == schemaVersion_) return false;
    schema_.read(*this, *session_);
    session_->setUserTables(schema_.tableNames());
    schemaVersion_ = version;
    return true;
}

qint64 SqliteConnection::readSchemaVersion() {
    RowStore row;
    prepared("PRAGMA schema_version", Access::Internal)->read({}, row);
    return row.value(0, 0).integer;
}

} // namespace dao
