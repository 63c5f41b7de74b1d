#include "support/TempDatabase.h"

#include "support/PostgresServer.h"

#include <QFile>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

using Handle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

void check(sqlite3* database, int code) {
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(database));
}

Handle openNative(const QString& path) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open(path.toUtf8().constData(), &raw);
    Handle database(raw, &sqlite3_close);
    check(raw, code);
    return database;
}

void execute(const QString& file, const QByteArray& nativeSql) {
    const Handle database = openNative(file);
    check(database.get(), sqlite3_exec(database.get(), nativeSql.constData(), nullptr, nullptr, nullptr));
}

} // namespace

TempDatabase::TempDatabase(const QByteArray& nativeSql) {
    if (!folder_.isValid()) throw std::runtime_error("no temporary folder");
    if (testsOnServer()) url_ = PostgresServer::instance().takeDatabase();
    if (!nativeSql.isEmpty()) run(nativeSql);
}

TempDatabase::~TempDatabase() {
    if (!url_.isEmpty()) PostgresServer::instance().returnDatabase(url_);
}

QString TempDatabase::path() const {
    return url_.isEmpty() ? folder_.filePath(u"database.sqlite"_s) : url_;
}

void TempDatabase::run(const QByteArray& nativeSql) const {
    url_.isEmpty() ? execute(path(), nativeSql)
                   : void(runOnServer(url_, serverText(nativeSql) + ";SELECT mkl_complete_tables()"));
}

void TempDatabase::copy(const QString& other) const {
    if (!url_.isEmpty()) return PostgresServer::copy(other, url_);
    QFile::remove(path());
    execute(other, "VACUUM INTO '" + path().toUtf8() + '\'');
}

QByteArray TempDatabase::one(const QByteArray& nativeSql) const {
    if (!url_.isEmpty()) return runOnServer(url_, serverText(nativeSql));
    const Handle database = openNative(path());
    sqlite3_stmt* raw = nullptr;
    check(database.get(), sqlite3_prepare_v2(database.get(), nativeSql.constData(), -1, &raw, nullptr));
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(raw, &sqlite3_finalize);
    const int code = sqlite3_step(raw);
    check(database.get(), code);
    if (code != SQLITE_ROW) throw std::runtime_error("no row: " + nativeSql.toStdString());
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(raw, 0));
    return text ? QByteArray(text, sqlite3_column_bytes(raw, 0)) : QByteArrayLiteral("NULL");
}

void TempDatabase::overwrite(const QByteArray& bytes) const {
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write the file");
}

QByteArray TempDatabase::bytes() const {
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the file");
    return file.readAll();
}

} // namespace mkl
