#pragma once
// The plain C interface of the engine, as a program without a data layer would use it.
#include <QFile>
#include <QString>
#include <sqlite3.h>
#include <stdexcept>
#include <string_view>

namespace bench {

class RawDatabase {
public:
    explicit RawDatabase(const QString& file) {
        require(sqlite3_open_v2(QFile::encodeName(file).constData(), &database_, SQLITE_OPEN_READWRITE, nullptr));
    }
    ~RawDatabase() { sqlite3_close(database_); }
    Q_DISABLE_COPY_MOVE(RawDatabase)

    sqlite3* handle() const { return database_; }
    void require(int status) const {
        if (status != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_));
    }

private:
    sqlite3* database_ = nullptr;
};

class RawStatement {
public:
    RawStatement(const RawDatabase& database, const char* text) {
        database.require(sqlite3_prepare_v2(database.handle(), text, -1, &statement_, nullptr));
    }
    ~RawStatement() { sqlite3_finalize(statement_); }
    Q_DISABLE_COPY_MOVE(RawStatement)

    int column(std::string_view name) const {
        for (int i = 0; i < sqlite3_column_count(statement_); ++i)
            if (name == sqlite3_column_name(statement_, i)) return i;
        throw std::runtime_error("no such column");
    }
    void bind(int number, int value) { sqlite3_bind_int(statement_, number, value); }
    bool step() const { return sqlite3_step(statement_) == SQLITE_ROW; }
    void reset() { sqlite3_reset(statement_); }
    int bytes(int column) const { return sqlite3_column_bytes(statement_, column); } ///< of the text as it is stored
    int integer(int column) const { return sqlite3_column_int(statement_, column); }
    QString text(int column) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        return QString::fromUtf8(bytes, sqlite3_column_bytes(statement_, column));
    }

private:
    sqlite3_stmt* statement_ = nullptr;
};

} // namespace bench
