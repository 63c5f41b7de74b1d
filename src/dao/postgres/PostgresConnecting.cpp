#include "dao/postgres/PostgresConnecting.h"

#include "base/RunTimeError.h"
#include "base/Texts.h"
#include "dao/Errors.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <algorithm>
#include <poll.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

constexpr int patienceInSeconds = 30; // where the address tells no connect_timeout

int patienceOf(PGconn* connection) {
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(PQconninfo(connection), &PQconninfoFree);
    int seconds = 0;
    for (const PQconninfoOption* option = options.get(); option && option->keyword; ++option)
        if (qstrcmp(option->keyword, "connect_timeout") == 0 && option->val) seconds = QByteArray(option->val).toInt();
    return 1000 * (seconds > 0 ? seconds : patienceInSeconds);
}

struct Attempt {
    bool hasSucceeded = false;
    ConnStatusType lastStage = CONNECTION_NEEDED; ///< before it failed
};

/// What the client does by itself, but with the state of an error in place of its text, which is in any language.
Attempt await(PGconn* connection, PostgresPollingStatusType (*step)(PGconn*)) {
    PQsetErrorVerbosity(connection, PQERRORS_SQLSTATE);
    QElapsedTimer timer;
    timer.start();
    const int patience = patienceOf(connection);
    Attempt attempt;
    auto wanted = PGRES_POLLING_WRITING;
    while (wanted == PGRES_POLLING_READING || wanted == PGRES_POLLING_WRITING) {
        const auto events = static_cast<short>(wanted == PGRES_POLLING_READING ? POLLIN : POLLOUT);
        pollfd socket{PQsocket(connection), events, 0};
        const int left = std::max(0, patience - static_cast<int>(timer.elapsed()));
        if (socket.fd < 0 || poll(&socket, 1, left) == 0) return attempt;
        attempt.lastStage = PQstatus(connection);
        wanted = step(connection);
    }
    PQsetErrorVerbosity(connection, PQERRORS_DEFAULT);
    attempt.hasSucceeded = wanted == PGRES_POLLING_OK;
    return attempt;
}

QString stateIn(const QString& message) {
    static const QRegularExpression state(u":  ([0-9A-Z]{5})\\s*$"_s);
    return state.match(message).captured(1);
}

bool isPlain(PGconn* connection, const ServerAddress& address) {
    const char* host = PQhost(connection);
    return address.refusesEncryption && host && *host != '\0' && *host != '/' && *host != '@';
}

[[noreturn]] void raise(PGconn* connection, const ServerAddress& address, ConnStatusType lastStage) {
    using mkl::TextId;
    const QString message = QString::fromUtf8(PQerrorMessage(connection)).trimmed();
    const QString state = stateIn(message), source = u"PostgreSQL: "_s + message;
    if (PQconnectionNeedsPassword(connection)) mkl::throwError(err::PasswordNeeded, {address.user}, source);
    if (state == u"28P01") mkl::throwError(err::WrongPassword, {address.user}, source);
    if (state == u"28000" && isPlain(connection, address))
        throw mkl::RunTimeError(err::UserRefused, mkl::text(TextId::ServerRefusesPlain, {address.user}), source);
    if (state == u"28000" || state == u"42501") mkl::throwError(err::UserRefused, {address.user}, source);
    if (state == u"3D000")
        throw mkl::RunTimeError(err::FileNotFound, mkl::text(TextId::ServerDatabaseMissing, {address.database}),
                                source);
    if (lastStage == CONNECTION_SSL_STARTUP)
        throw mkl::RunTimeError(err::NoServer, mkl::text(TextId::ServerNotEncrypted, {address.shown}), source);
    mkl::throwError(err::NoServer, {address.shown}, source);
}

} // namespace

PostgresHandle connectTo(const QByteArray& url, const ServerAddress& address, const QString& password) {
    const QByteArray secret = password.toUtf8();
    const char* const keywords[] = {"dbname", secret.isEmpty() ? nullptr : "password", nullptr};
    const char* const values[] = {url.constData(), secret.constData(), nullptr};
    constexpr int nameIsAddress = 1;
    PostgresHandle connection(PQconnectStartParams(keywords, values, nameIsAddress));
    Attempt attempt;
    if (connection && PQstatus(connection.get()) != CONNECTION_BAD) attempt = await(connection.get(), &PQconnectPoll);
    if (!attempt.hasSucceeded) raise(connection.get(), address, attempt.lastStage);
    return connection;
}

bool connectAnew(PGconn* connection) {
    return PQresetStart(connection) == 1 && await(connection, &PQresetPoll).hasSucceeded;
}

} // namespace dao
