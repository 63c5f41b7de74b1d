#include "dao/sqlite/SqliteErrors.h"

#include "dao/Errors.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

struct Mapping {
    int code;
    mkl::Long number;
    bool namesFile;
};

constexpr Mapping mappings[] = {
    {SQLITE_PERM, err::CannotOpenFile, true},
    {SQLITE_BUSY, err::Locked, false},
    {SQLITE_LOCKED, err::Locked, false},
    {SQLITE_NOMEM, err::OutOfMemory, false},
    {SQLITE_READONLY, err::ReadOnly, false},
    {SQLITE_INTERRUPT, err::Interrupted, false},
    {SQLITE_IOERR, err::DiskError, true},
    {SQLITE_CORRUPT, err::DamagedDatabase, true},
    {SQLITE_FULL, err::DiskFull, false},
    {SQLITE_CANTOPEN, err::CannotOpenFile, true},
    {SQLITE_PROTOCOL, err::Locked, false},
    {SQLITE_TOOBIG, mkl::err::Overflow, false},
    {SQLITE_MISMATCH, mkl::err::TypeMismatch, false},
    {SQLITE_NOTADB, err::UnknownFormat, true},
};

// "… failed: TABLE.Column": what stands behind the colon, and the column of it.
QString objectOf(const QString& message) {
    const qsizetype colon = message.indexOf(u": "_s);
    return colon < 0 ? message : message.mid(colon + 2);
}

QString columnOf(const QString& message) {
    const QString object = objectOf(message);
    return object.mid(object.lastIndexOf(u'.') + 1);
}

bool isKeyColumn(sqlite3* database, const QString& message) {
    const QString object = objectOf(message);
    const QByteArray table = object.left(object.lastIndexOf(u'.')).toUtf8();
    const QByteArray column = columnOf(message).toUtf8();
    int isKey = 0;
    sqlite3_table_column_metadata(database, nullptr, table.constData(), column.constData(), nullptr, nullptr, nullptr,
                                  &isKey, nullptr);
    return isKey != 0;
}

[[noreturn]] void raiseConstraintError(sqlite3* database, int code, const QString& message, const QString& source) {
    switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID: mkl::throwError(err::DuplicateKey, {}, source);
    case SQLITE_CONSTRAINT_NOTNULL:
        if (isKeyColumn(database, message)) mkl::throwError(err::NullInKey, {}, source);
        mkl::throwError(err::NullNotAllowed, {columnOf(message)}, source);
    case SQLITE_CONSTRAINT_FOREIGNKEY: mkl::throwError(err::RelatedRecords, {}, source);
    case SQLITE_CONSTRAINT_DATATYPE: mkl::throwError(err::ConversionError, {columnOf(message)}, source);
    default: mkl::throwError(err::RuleViolated, {objectOf(message)}, source);
    }
}

// The plain error code stands for many things; these two can be brought about by a statement of the dialect.
[[noreturn]] void raiseLogicError(const QString& message, const QString& source) {
    if (message == u"integer overflow"_s) mkl::throwError(mkl::err::Overflow, {}, source);
    const bool tooComplex = message.contains(u"too large"_s) || message.contains(u"too many"_s) ||
                            message.contains(u"at most"_s) || message.contains(u"stack overflow"_s) ||
                            message.startsWith(u"variable number must be"_s);
    if (tooComplex) mkl::throwError(err::TooComplex, {}, source);
    const bool nameTaken = message.contains(u"already exists"_s) || message.contains(u"already an index"_s) ||
                           message.contains(u"reserved for internal use"_s);
    if (nameTaken) mkl::throwError(err::TableExists, {objectOf(message)}, source);
    mkl::throwError(err::InternalError, {QString::number(SQLITE_ERROR)}, source);
}

} // namespace

void raiseSqliteError(sqlite3* database, int code, const QString& fileName) {
    const QString message = QString::fromUtf8(sqlite3_errmsg(database));
    const QString source = u"SQLite %1: %2"_s.arg(code).arg(message);
    const int primary = code & 0xFF;
    if (primary == SQLITE_CONSTRAINT) raiseConstraintError(database, code, message, source);
    if (primary == SQLITE_ERROR) raiseLogicError(message, source);
    const auto* mapping = std::ranges::find(mappings, primary, &Mapping::code);
    if (mapping == std::end(mappings)) mkl::throwError(err::InternalError, {QString::number(code)}, source);
    if (mapping->namesFile) mkl::throwError(mapping->number, {fileName}, source);
    mkl::throwError(mapping->number, {}, source);
}

} // namespace dao
