#pragma once
// A catalogue on a real server, with roles that need a password.
#include "dao/Workspace.h"

#include <QString>

namespace mkl {

class ServerCatalogue {
public:
    /// Categories 10 "Schrauben" with the articles 1 and 2, below it 11 "Holzschrauben", and 20 "Werkzeug"; sender 1.
    ServerCatalogue();
    ~ServerCatalogue();
    Q_DISABLE_COPY_MOVE(ServerCatalogue)

    QString url() const { return url_; }
    /// The address as that user.
    QString url(const QString& user) const;
    /// The folder of the server's socket, and the name of the database.
    QString folder() const;
    QString database() const;

    /// A role that logs in with the password and may read, or read and write.
    void addClerk(const QString& name, const QString& password) const;
    void addReader(const QString& name, const QString& password) const;

    /// Runs native statements as the owner; the first value of the last one.
    QByteArray run(const QByteArray& native) const;
    /// Gives the category another name, as another program does.
    void rename(Long category, const QString& name) const;
    QString nameOf(Long category) const;

private:
    void addRole(const QString& name, const QString& password, const QByteArray& rights) const;

    QString url_;
};

} // namespace mkl
