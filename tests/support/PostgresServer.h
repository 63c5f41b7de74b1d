#pragma once
// A server of this test program alone, in a temporary folder and behind a socket there; made when it is first asked
// for and gone with the program, however that ends.
#include <QByteArray>
#include <QStringList>
#include <functional>
#include <memory>

namespace mkl {

/// Whether the tests are to run on a server instead of files.
bool testsOnServer();

class PostgresServer {
public:
    static PostgresServer& instance();
    /// One more server beside that one, with settings of its own ("name=value"), its clock so many seconds ahead.
    explicit PostgresServer(const QStringList& settings = {}, int clockAhead = 0);
    ~PostgresServer();

    /// An empty database; its address.
    QString takeDatabase();
    /// Gives it back, to be emptied and taken again.
    void returnDatabase(const QString& url);
    QString urlOf(const QByteArray& database) const;

    /// Whether this version of the server has such a setting; it refuses to start with one that it has not.
    static bool knows(const QString& setting);

    /// Gives an empty database the tables of another one and their rows.
    static void copy(const QString& from, const QString& to);

    void stop();
    void start();
    /// Ends it on the spot, as a failing machine does.
    void kill();

    /// Done once with each new database.
    static std::function<void(const QString& url)>& preparation();

private:
    void launch();

    struct Data;
    std::unique_ptr<Data> d_;
};

/// Runs native statements; the first value of the last one as text, "NULL" for Null or nothing. Throws
/// std::runtime_error with the server's text.
QByteArray runOnServer(const QString& url, const QByteArray& native);

/// The statements by which the tests make tables in a file, as the server understands them.
QByteArray serverText(const QByteArray& native);
/// The same where the tests run on a server; otherwise the statements themselves.
QString nativeText(const QString& native);

} // namespace mkl
