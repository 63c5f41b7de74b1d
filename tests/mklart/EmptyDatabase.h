#pragma once
#include "support/PostgresServer.h"

namespace mkl {

/// A database of the test's server in which nothing is, as somebody makes one for a new catalogue.
class EmptyDatabase {
public:
    EmptyDatabase() {
        static int made = 0;
        name_ = "katalog" + QByteArray::number(++made);
        runOnServer(PostgresServer::instance().urlOf("postgres"), "CREATE DATABASE " + name_);
    }
    ~EmptyDatabase() {
        runOnServer(PostgresServer::instance().urlOf("postgres"), "DROP DATABASE " + name_ + " WITH (FORCE)");
    }
    Q_DISABLE_COPY_MOVE(EmptyDatabase)

    const QByteArray& name() const { return name_; }
    QString url() const { return PostgresServer::instance().urlOf(name_); }
    QString urlFor(const QString& user) const {
        return url().replace(QStringLiteral("user=mkl"), QStringLiteral("user=") + user);
    }
    QByteArray native(const QByteArray& statements) const { return runOnServer(url(), statements); }

private:
    QByteArray name_;
};

} // namespace mkl
