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

/// What the client does by itself, but with the state of an error in place of its text, which is in any language.
bool await(PGconn* connection, PostgresPollingStatusType (*step)(PGconn*)) {
    PQsetErrorVerbosity(connection, PQERRORS_SQLSTATE);
    QElapsedTimer timer;
    timer.start();
    const int patience = patienceOf(connection);
    auto wanted = PGRES_POLLING_WRITING;
    while (wanted == PGRES_POLLING_READING || wanted == PGRES_POLLING_WRITING) {
        const auto events = static_cast<short>(wanted == PGRES_POLLING_READING ? POLLIN : POLLOUT);
        pollfd socket{PQsocket(connection), events, 0};
        const int left = std::max(0, patience - static_cast<int>(timer.elapsed()));
        if (socket.fd < 0 || poll(&socket, 1, left) == 0) return false;
        wanted = step(connection);
    }
    PQsetErrorVerbosity(connection, PQERRORS_DEFAULT);
    return wanted == PGRES_POLLING_OK;
}

QString stateIn(const QString& message) {
    static const QRegularExpression state(u":  ([0-9A-Z]{5})\\s*$"_s);
    return state.match(message).captured(1);
}

[[noreturn]] void raise(PGconn* connection, const ServerAddress& address) {
    const QString message = QString::fromUtf8(PQerrorMessage(connection)).trimmed();
    const QString state = stateIn(message), source = u"PostgreSQL: "_s + message;
    if (PQconnectionNeedsPassword(connection)) mkl::throwError(err::PasswordNeeded, {address.user}, source);
    if (state == u"28P01") mkl::throwError(err::WrongPassword, {address.user}, source);
    if (state == u"28000" || state == u"42501") mkl::throwError(err::UserRefused, {address.user}, source);
    if (state == u"3D000")
        throw mkl::RunTimeError(err::FileNotFound, mkl::text(mkl::TextId::ServerDatabaseMissing, {address.database}),
                                source);
    mkl::throwError(err::NoServer, {address.shown}, source);
}

} // namespace

PostgresHandle connectTo(const QByteArray& url, const ServerAddress& address, const QString& password) {
    const QByteArray secret = password.toUtf8();
    const char* const keywords[] = {"dbname", secret.isEmpty() ? nullptr : "password", nullptr};
    const char* const values[] = {url.constData(), secret.constData(), nullptr};
    constexpr int nameIsAddress = 1;
    PostgresHandle connection(PQconnectStartParams(keywords, values, nameIsAddress));
    const bool begun = connection && PQstatus(connection.get()) != CONNECTION_BAD;
    if (!begun || !await(connection.get(), &PQconnectPoll)) raise(connection.get(), address);
    return connection;
}

bool connectAnew(PGconn* connection) {
    return PQresetStart(connection) == 1 && await(connection, &PQresetPoll);
}

} // namespace dao
