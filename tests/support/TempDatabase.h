#pragma once
// A database file in a folder of its own, made by native statements and gone with the object; where the tests run on
// a server, a database there.
#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace mkl {

class TempDatabase {
public:
    /// An SQLite file with what the statements make; without any, a file that does not exist yet.
    explicit TempDatabase(const QByteArray& nativeSql = {});
    ~TempDatabase();
    Q_DISABLE_COPY_MOVE(TempDatabase)

    QString path() const;
    QString folder() const { return folder_.path(); }

    /// Runs native statements over a connection of its own; throws std::runtime_error with the engine's text.
    void run(const QByteArray& nativeSql) const;
    /// The first value of a native query as text, for looking behind the data layer; "NULL" for Null.
    QByteArray one(const QByteArray& nativeSql) const;
    /// Becomes what that database holds now, whatever its journal.
    void copy(const QString& other) const;
    /// Puts these bytes in the file's place.
    void overwrite(const QByteArray& bytes) const;
    QByteArray bytes() const;

private:
    QTemporaryDir folder_;
    QString url_; ///< of a database on the server; empty for a file
};

} // namespace mkl
