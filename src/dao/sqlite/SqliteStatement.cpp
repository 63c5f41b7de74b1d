#include "dao/sqlite/SqliteStatement.h"

#include "dao/Errors.h"
#include "dao/sqlite/SqliteFaults.h"

namespace dao {

namespace {

/// Puts a statement back at its start whatever happens, so that it holds no lock.
class ResetAtEnd {
public:
    explicit ResetAtEnd(sqlite3_stmt* statement)
        : statement_(statement) {}
    ~ResetAtEnd() { sqlite3_reset(statement_); }
    ResetAtEnd(const ResetAtEnd&) = delete;
    ResetAtEnd& operator=(const ResetAtEnd&) = delete;

private:
    sqlite3_stmt* statement_;
};

} // namespace

SqliteStatement::SqliteStatement(std::shared_ptr<SqliteSession> session, const QByteArray& native, Access access)
    : session_(std::move(session))
    , access_(access) {
    const SqliteSession::AccessScope scope(*session_, access_);
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v3(session_->database(), native.constData(), static_cast<int>(native.size()) + 1,
                                        SQLITE_PREPARE_PERSISTENT, &prepared, &rest);
    statement_.reset(prepared);
    if (code == SQLITE_TOOBIG) mkl::throwError(err::TooComplex);
    session_->check(code);
    requireOneStatement(rest);
    // Of a few statements that store the engine does not ask.
    const bool writes = sqlite3_stmt_readonly(statement_.get()) == 0;
    if (access_ == Access::Read && writes) mkl::throwError(err::NotPermitted, {QString::fromUtf8(native)});
}

// The engine takes the first statement of a text and leaves the others alone.
void SqliteStatement::requireOneStatement(const char* rest) const {
    if (!statement_) mkl::throwError(err::NoStatement, {QString()});
    const QByteArray behind = QByteArrayView(rest).trimmed().toByteArray();
    if (!behind.isEmpty()) mkl::throwError(err::TextAfterEnd, {QString::fromUtf8(behind)});
}

bool SqliteStatement::readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype limit) {
    const ResetAtEnd reset(statement_.get());
    const SqliteSession::AccessScope scope(*session_, access_); // it may be prepared anew
    bind(parameters);
    for (const int counter : {SQLITE_STMTSTATUS_VM_STEP, SQLITE_STMTSTATUS_SORT})
        sqlite3_stmt_status(statement_.get(), counter, 1);
    passFaultPoint(*session_, statement_.get());
    int code = SQLITE_OK;
    for (qsizetype read = 0; (code = sqlite3_step(statement_.get())) == SQLITE_ROW; ++read) {
        if (read == limit && isCheapSoFar(read)) return false;
        appendRow(rows);
    }
    session_->check(code);
    return true;
}

// A scan takes a few steps of the engine's machine per row; a sort or a search for rare rows takes many before the
// first one.
bool SqliteStatement::isCheapSoFar(qsizetype rows) const {
    constexpr qsizetype stepsPerRow = 100;
    const auto counted = [&](int counter) { return sqlite3_stmt_status(statement_.get(), counter, 0); };
    return counted(SQLITE_STMTSTATUS_SORT) == 0 && counted(SQLITE_STMTSTATUS_VM_STEP) < rows * stepsPerRow;
}

qint64 SqliteStatement::run(std::span<const StoredValue> parameters) {
    const ResetAtEnd reset(statement_.get());
    const SqliteSession::AccessScope scope(*session_, access_); // it may be prepared anew
    bind(parameters);
    passFaultPoint(*session_, statement_.get());
    if (access_ == Access::Define) session_->countDefinition();
    int code = SQLITE_OK;
    while ((code = sqlite3_step(statement_.get())) == SQLITE_ROW) {
    }
    session_->check(code);
    return sqlite3_changes64(session_->database());
}

bool SqliteStatement::takeStale() {
    return sqlite3_stmt_status(statement_.get(), SQLITE_STMTSTATUS_REPREPARE, 1) > 0;
}

// The values outlive the run, and each run binds all of them anew: nothing is copied.
void SqliteStatement::bind(std::span<const StoredValue> parameters) {
    Q_ASSERT(sqlite3_bind_parameter_count(statement_.get()) == static_cast<int>(parameters.size()));
    int number = 0;
    for (const StoredValue& value : parameters)
        session_->check(bindOne(++number, value));
}

int SqliteStatement::bindOne(int number, const StoredValue& value) {
    sqlite3_stmt* statement = statement_.get();
    const auto size = static_cast<sqlite3_uint64>(value.bytes.size());
    switch (value.kind) {
    case StoredValue::Kind::Null: return sqlite3_bind_null(statement, number);
    case StoredValue::Kind::Integer: return sqlite3_bind_int64(statement, number, value.integer);
    case StoredValue::Kind::Real: return sqlite3_bind_double(statement, number, value.real);
    case StoredValue::Kind::Text:
        return sqlite3_bind_text64(statement, number, value.bytes.constData(), size, SQLITE_STATIC, SQLITE_UTF8);
    case StoredValue::Kind::Blob:
        return sqlite3_bind_blob64(statement, number, value.bytes.constData(), size, SQLITE_STATIC);
    }
    return SQLITE_MISUSE;
}

// The bytes of a text are taken without its terminating zero, which the engine would have to add to a copy; asked for
// their number first it turns them into UTF-8 where the file holds something else.
void SqliteStatement::appendRow(RowStore& rows) const {
    const int count = sqlite3_data_count(statement_.get());
    for (int column = 0; column < count; ++column) {
        sqlite3_value* value = sqlite3_column_value(statement_.get(), column);
        const int type = sqlite3_value_type(value);
        switch (type) {
        case SQLITE_INTEGER: rows.appendInteger(sqlite3_value_int64(value)); break;
        case SQLITE_FLOAT: rows.appendReal(sqlite3_value_double(value)); break;
        case SQLITE_TEXT:
        case SQLITE_BLOB: {
            const int size = sqlite3_value_bytes(value);
            const QByteArrayView bytes(static_cast<const char*>(sqlite3_value_blob(value)), size);
            type == SQLITE_TEXT ? rows.appendText(bytes) : rows.appendBlob(bytes);
            break;
        }
        default: rows.appendNull();
        }
    }
    rows.endRow();
}

} // namespace dao
