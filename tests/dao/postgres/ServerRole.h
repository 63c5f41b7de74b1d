#pragma once
// A user of the test server, gone with the object, and connections that get in the way.
#include "support/PostgresServer.h"

namespace dao {

/// The address with another user.
inline QString withUser(const QString& url, const QString& user) {
    return QString(url).replace(QStringLiteral("user=mkl"), QStringLiteral("user=") + user);
}

/// May do what the statements grant; "ROLE" in them stands for its name.
class ServerRole {
public:
    ServerRole(const QString& url, const QByteArray& name, const QByteArray& grants)
        : url_(url)
        , name_(name) {
        mkl::runOnServer(url_,
                         "DROP ROLE IF EXISTS " + name_ + "; CREATE ROLE " + name_ + " LOGIN PASSWORD 'Geheim-1'");
        if (!grants.isEmpty()) mkl::runOnServer(url_, QByteArray(grants).replace("ROLE", name_));
    }
    ~ServerRole() {
        mkl::runOnServer(url_, "SELECT pg_terminate_backend(pid, 60000) FROM pg_stat_activity WHERE usename = '" +
                                   name_ + "'; DROP OWNED BY " + name_ + "; DROP ROLE " + name_);
    }
    Q_DISABLE_COPY_MOVE(ServerRole)

    QString url() const { return withUser(url_, QString::fromLatin1(name_)); }

private:
    QString url_;
    QByteArray name_;
};

} // namespace dao
