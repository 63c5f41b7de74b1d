#include "dao/postgres/PostgresConnection.h"

#include "dao/Errors.h"
#include "dao/Substitute.h"
#include "dao/postgres/PostgresFunctions.h"
#include "dao/postgres/PostgresRights.h"

#include <algorithm>
#include <limits>

namespace dao {

PostgresConnection::PostgresConnection(std::shared_ptr<PostgresSession> session, bool readOnly,
                                       int busyTimeoutMilliseconds)
    : session_(std::move(session))
    , readOnly_(readOnly)
    , busyTimeout_(busyTimeoutMilliseconds)
    , localRows_(*this, schema_,
                 [this](const QByteArray& native) { return make(native, Access::Read, guardsOf(native)); }) {
    session_->setReconnecting([this] { return transaction().depth() == 0; }, [this] { applySettings(); });
    session_->setKeyColumns([this](const QString& table, const QString& column) {
        const jet::Table* found = schema_.findTable(table);
        return found && found->primaryKey.contains(found->columnIndex(column));
    });
    applySettings();
    const PostgresRights rights = PostgresRights::of(*session_);
    readOnly_ = readOnly_ || rights.isReadOnly;
    mayWrite_ = rights.mayWrite;
    PostgresFunctions::install(*session_);
    refreshSchema();
}

void PostgresConnection::applySettings() {
    session_->script("SET search_path = public, mkl; SET client_encoding = 'UTF8'; SET TimeZone = 'UTC'; "
                     "SET client_min_messages = warning; SET bytea_output = 'hex'; SET DateStyle = 'ISO, YMD'; "
                     "DO $$ BEGIN IF NOT pg_is_in_recovery() THEN LISTEN mkl_changed; END IF; END $$");
    if (readOnly_) session_->script("SET default_transaction_read_only = on");
    setBusyTimeout(busyTimeout_);
}

// The server takes 0 for waiting without end.
void PostgresConnection::setBusyTimeout(int milliseconds) {
    session_->script("SET lock_timeout = " + QByteArray::number(std::max(1, milliseconds)));
    session_->setPatience(milliseconds);
    busyTimeout_ = milliseconds;
}

void PostgresConnection::close() {
    statements_.clear();
    session_->close();
}

std::shared_ptr<Statement> PostgresConnection::make(const QByteArray& native, Access access, PostgresGuards guards) {
    return std::make_shared<PostgresStatement>(session_, schema_, changes_, native, access, std::move(guards));
}

// What the values of a column of no type mean only their marks tell, which no function of the server knows.
std::shared_ptr<Statement> PostgresConnection::prepare(const QByteArray& native, Access access) {
    if (access != Access::Read && access != Access::Write) return make(native, access, {});
    for (const jet::Table& table : schema_.tables())
        for (const jet::Column& column : table.columns)
            if (column.type == jet::ColumnType::Unknown && native.contains(target_.name(column.name)) &&
                native.contains(target_.name(table.name)))
                throw NotExpressible();
    return make(native, access, guardsOf(native));
}

// A result without rows costs the server next to nothing, and it fails where the columns are others than before.
// Statements of the old tables keep the old guard.
PostgresGuards PostgresConnection::guardsOf(const QByteArray& native) {
    PostgresGuards guards;
    for (const jet::Table& table : schema_.tables()) {
        const QByteArray name = target_.name(table.name);
        if (!native.contains(name)) continue;
        std::shared_ptr<PostgresGuard>& guard = guards_[table.name];
        if (!guard) {
            const QByteArray statement = "guard" + QByteArray::number(++guardCount_);
            const auto forget = [session = session_](PostgresGuard* old) {
                session->forget(old->statement, old->generation);
                delete old;
            };
            guard.reset(new PostgresGuard{statement, "SELECT * FROM " + name + " LIMIT 0"}, forget);
        }
        guards.push_back(guard);
    }
    return guards;
}

std::shared_ptr<Statement> PostgresConnection::prepared(const QByteArray& native, Access access) {
    const std::pair key(native, static_cast<int>(access));
    if (const auto* known = statements_.find(key)) return *known;
    return statements_.insert(key, make(native, access, {}));
}

void PostgresConnection::executeScript(const QByteArray& native) {
    defineTable(native);
    session_->savedScript("SELECT mkl_complete_tables()");
}

void PostgresConnection::defineTable(const QByteArray& native) {
    ++*changes_;
    session_->savedScript(native);
}

QByteArray PostgresConnection::leavingOutFailedRows(const QByteArray& native) const {
    return native.startsWith("INSERT ") ? native + " ON CONFLICT DO NOTHING" : native;
}

// Where nothing may be written there is nobody to keep away.
void PostgresConnection::begin() {
    readOnly_ ? session_->begin() : session_->beginLocked();
}

void PostgresConnection::commit() {
    session_->commit();
}

void PostgresConnection::rollback() {
    ++*changes_;
    session_->rollback();
}

void PostgresConnection::savepoint(const QByteArray& name) {
    session_->savepoint(name);
}

void PostgresConnection::release(const QByteArray& name) {
    session_->release(name);
}

void PostgresConnection::rollbackTo(const QByteArray& name) {
    ++*changes_;
    session_->rollbackTo(name);
}

Long PostgresConnection::localNumber() {
    RowStore row;
    prepared("SELECT number FROM mkl.local", Access::Internal)->read({}, row);
    return static_cast<Long>(row.value(0, 0).integer);
}

void PostgresConnection::setLocalNumber(Long number) {
    const StoredValue value = StoredValue::ofInteger(number);
    prepared("UPDATE mkl.local SET number = $1::integer", Access::Internal)->run({&value, 1});
}

bool PostgresConnection::refreshSchema() {
    const QByteArray stamp = PostgresSchema::stamp(*session_);
    if (stamp == schemaStamp_) return false;
    schema_.read(*session_);
    localRows_.forgetTables();
    statements_.clear();
    guards_.clear();
    defaults_.clear();
    schemaStamp_ = stamp;
    return true;
}

ColumnValues PostgresConnection::initialValues(const jet::Table& table) {
    ColumnValues result;
    for (int column = 0; column < table.columns.size(); ++column)
        if (table.columns[column].autoNumber)
            result.append({column, StoredValue::ofInteger(takeCounter(table, table.columns[column]))});
    const std::shared_ptr<const RowStore> rows = defaultsOf(table);
    for (qsizetype row = 0; row < rows->size(); ++row) {
        const int column = table.columnIndex(QString::fromUtf8(rows->value(row, 0).bytes));
        if (column < 0 || table.columns[column].autoNumber) continue;
        const jet::Column& target = table.columns[column];
        result.append({column, encodeFor(decode(valueOf(rows->value(row, 1).bytes), target.type), target)});
    }
    return result;
}

// A number stands for itself; anything else the server knows.
StoredValue PostgresConnection::valueOf(const QByteArray& expression) {
    bool isNumber = false;
    const Long number = expression.toInt(&isNumber);
    if (isNumber) return StoredValue::ofInteger(number);
    RowStore value;
    prepared("SELECT " + expression, Access::Read)->read({}, value);
    return owned(value.value(0, 0));
}

std::shared_ptr<const RowStore> PostgresConnection::defaultsOf(const jet::Table& table) {
    std::shared_ptr<RowStore>& known = defaults_[table.name];
    if (known) return known;
    const StoredValue name = StoredValue::ofText(target_.name(table.name));
    auto rows = std::make_shared<RowStore>();
    prepared("SELECT a.attname, pg_get_expr(d.adbin, d.adrelid) FROM pg_attribute a JOIN pg_attrdef d "
             "ON d.adrelid = a.attrelid AND d.adnum = a.attnum WHERE a.attrelid = ($1::text)::regclass "
             "AND a.attgenerated = '' AND NOT a.attisdropped ORDER BY a.attnum",
             Access::Internal)
        ->read({&name, 1}, *rows);
    return known = std::move(rows);
}

// Numbers may have been given by hand; those after them keep the step of the sequence. That is settled by the first
// new row of a transaction; what it stores by hand afterwards moves the sequence along.
qint64 PostgresConnection::takeCounter(const jet::Table& table, const jet::Column& column) {
    Counter& counter = counters_[table.name];
    const bool isSettled = session_->inTransaction() && counter.settledIn == session_->lockPeriod();
    RowStore row;
    if (isSettled) {
        const StoredValue sequence = StoredValue::ofText(counter.sequence);
        prepared("SELECT nextval(($1::text)::regclass)", Access::Internal)->read({&sequence, 1}, row);
    } else {
        const StoredValue names[] = {StoredValue::ofText(target_.name(table.name)),
                                     StoredValue::ofText(column.name.toUtf8())};
        prepared("SELECT mkl_next($1::text, $2::text), mkl_sequence($1::text, $2::text)", Access::Internal)
            ->read(names, row);
        counter = {owned(row.value(0, 1)).bytes, session_->lockPeriod()};
    }
    const qint64 number = row.value(0, 0).integer;
    if (number > std::numeric_limits<mkl::Long>::max()) mkl::throwError(mkl::err::Overflow);
    return number;
}

} // namespace dao
