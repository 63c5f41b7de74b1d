#pragma once
// All rows of a database on the tests' server, to be looked at and put back.
#include <QByteArray>
#include <QString>

namespace mkl {

class ServerRows {
public:
    explicit ServerRows(QString url)
        : url_(std::move(url)) {}

    /// Remembers all rows and what the counters stand at, in the server itself.
    void keep() const;
    /// Puts them back.
    void restore() const;
    /// All rows of all tables as texts, in the order of these.
    QByteArray content() const;

private:
    QString url_;
};

} // namespace mkl
