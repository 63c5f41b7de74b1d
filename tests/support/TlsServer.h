#pragma once
#include "support/PostgresServer.h"

#include <QTemporaryDir>

namespace mkl {

/// Runs a shell's commands without a terminal; what they wrote. Throws std::runtime_error where one fails.
QByteArray runShell(const QString& folder, const QString& commands, const QByteArray& input = {});

/// A port of this machine at which nobody listens.
int freePort();

/// A server that is reached by TCP and TLS as well, with a certificate of its own and rules of its own for who may in.
class TlsServer {
public:
    /// The commands make server.crt and server.key in the folder; rules are lines of pg_hba.conf.
    TlsServer(const QString& certificateCommands, const QString& rules);

    /// Of a file in that folder.
    QString path(const QString& name) const { return folder_.filePath(name); }
    int port() const { return port_; }
    /// At the socket, as the owner of everything.
    QString url(const QByteArray& database) const { return server_->urlOf(database); }

private:
    QTemporaryDir folder_{QStringLiteral("/tmp/mkltlsXXXXXX")};
    int port_;
    std::unique_ptr<PostgresServer> server_;
};

} // namespace mkl
