#include "dao/sqlite/SqliteFile.h"

#include "dao/Errors.h"
#include "dao/sqlite/SqliteConnection.h"
#include "dao/sqlite/SqliteErrors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

void requireDatabaseFile(const QString& name) {
    const QFileInfo file(name);
    if (!file.exists()) mkl::throwError(err::FileNotFound, {name});
    if (!file.isFile() || !file.isReadable()) mkl::throwError(err::CannotOpenFile, {name});
    if (file.size() == 0) mkl::throwError(err::UnknownFormat, {name});
}

// The engine would read other things than a file out of a relative name.
QByteArray nativePath(const QString& name) {
    return QFileInfo(name).absoluteFilePath().toUtf8();
}

std::shared_ptr<Connection> connect(const QString& name, const QByteArray& path, int flags,
                                    const OpenOptions& options) {
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(path.constData(), &database, flags | SQLITE_OPEN_NOMUTEX,
                                     options.vfs.isEmpty() ? nullptr : options.vfs.constData());
    auto session = std::make_shared<SqliteSession>(database, name);
    session->check(code);
    return std::make_shared<SqliteConnection>(std::move(session), options.busyTimeoutMilliseconds);
}

// A file in write-ahead mode needs a file beside it even for reading. In a folder that cannot be written (a CD, a
// share) it can still be read as something that nobody changes, provided that no program has it open or left it
// behind in the middle of a change.
bool mayReadAsImmutable(const QString& name) {
    const bool isSettled = !QFile::exists(name + u"-wal"_s) && !QFile::exists(name + u"-journal"_s);
    return isSettled && !QFileInfo(QFileInfo(name).absolutePath()).isWritable();
}

std::shared_ptr<Connection> connectImmutable(const QString& name, const OpenOptions& options) {
    const QByteArray path = QUrl::toPercentEncoding(QFileInfo(name).absoluteFilePath(), "/");
    return connect(name, "file:" + path + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, options);
}

std::shared_ptr<Connection> connectExisting(const QString& name, const OpenOptions& options) {
    const int flags = options.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    try {
        return connect(name, nativePath(name), flags, options);
    } catch (const mkl::RunTimeError& error) {
        const bool lacksWriting = error.number() == err::CannotOpenFile || error.number() == err::ReadOnly;
        if (!lacksWriting || !mayReadAsImmutable(name)) throw;
    }
    return connectImmutable(name, options);
}

void makeEmptyFile(const QString& name) {
    const QFileInfo file(name);
    if (file.exists() || file.isSymLink()) mkl::throwError(err::DatabaseExists, {name});
    if (!QFileInfo(file.absolutePath()).isDir()) mkl::throwError(err::InvalidPath, {name});
    QFile empty(name);
    if (empty.open(QIODevice::WriteOnly | QIODevice::NewOnly)) return;
    mkl::throwError(QFile::exists(name) ? err::DatabaseExists : err::CannotOpenFile, {name});
}

} // namespace

std::shared_ptr<Connection> openSqlite(const QString& name, const OpenOptions& options) {
    requireDatabaseFile(name);
    try {
        return connectExisting(name, options);
    } catch (const mkl::RunTimeError& error) {
        if (error.number() == err::Locked) mkl::throwError(err::LockedExclusively, {name}, error.source());
        if (error.number() == err::ReadOnly) mkl::throwError(err::CannotOpenFile, {name}, error.source());
        throw;
    }
}

std::shared_ptr<Connection> createSqlite(const QString& name) {
    makeEmptyFile(name);
    try {
        auto connection = connect(name, nativePath(name), SQLITE_OPEN_READWRITE, {});
        connection->executeScript("PRAGMA journal_mode = WAL");
        return connection;
    } catch (const mkl::RunTimeError&) {
        QFile::remove(name);
        throw;
    }
}

std::shared_ptr<Connection> openSqliteInMemory() {
    return connect(u"memory"_s, ":memory:", SQLITE_OPEN_READWRITE, {});
}

} // namespace dao
