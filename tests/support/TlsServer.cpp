#include "support/TlsServer.h"

#include <QFile>
#include <QProcess>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

void write(const QString& name, const QString& text) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        throw std::runtime_error("cannot write " + name.toStdString());
}

} // namespace

int freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const bool isBound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0 &&
                         ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    ::close(socket);
    if (!isBound) throw std::runtime_error("no free port");
    return ntohs(address.sin_port);
}

QByteArray runShell(const QString& folder, const QString& commands, const QByteArray& input) {
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(u"setsid"_s, {u"--wait"_s, u"sh"_s, u"-e"_s, u"-c"_s, commands});
    process.write(input);
    process.closeWriteChannel();
    const bool ended = process.waitForFinished(60'000) && process.exitStatus() == QProcess::NormalExit;
    const QByteArray said = process.readAll();
    if (!ended || process.exitCode() != 0) throw std::runtime_error(commands.toStdString() + ": " + said.toStdString());
    return said;
}

TlsServer::TlsServer(const QString& certificateCommands, const QString& rules)
    : port_(freePort()) {
    runShell(folder_.path(), certificateCommands + u"\nchmod 600 server.key\nchmod 755 ."_s);
    write(path(u"pg_hba.conf"_s), u"local all mkl trust\n"_s + rules);
    if (geteuid() == 0) runShell(folder_.path(), u"chown postgres server.key"_s);
    server_ = std::make_unique<PostgresServer>(QStringList{u"listen_addresses=127.0.0.1"_s, u"port=%1"_s.arg(port_),
                                                           u"ssl=on"_s, u"ssl_cert_file="_s + path(u"server.crt"_s),
                                                           u"ssl_key_file="_s + path(u"server.key"_s),
                                                           u"hba_file="_s + path(u"pg_hba.conf"_s)});
}

} // namespace mkl
