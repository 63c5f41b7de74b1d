#include "dao/postgres/PostgresSession.h"

#include "dao/Errors.h"
#include "dao/postgres/PostgresErrors.h"

namespace dao {

namespace {

// Of our own statements only; no level of Transaction bears it.
constexpr const char* savepointText = "SAVEPOINT statement";
constexpr const char* releaseText = "RELEASE statement";

void ignoreNotice(void*, const PGresult*) {}

} // namespace

PostgresSession::PostgresSession(QByteArray url, QString name)
    : url_(std::move(url))
    , name_(std::move(name)) {
    connect();
}

void PostgresSession::connect() {
    connection_.reset(PQconnectdb(url_.constData()));
    if (PQstatus(raw()) != CONNECTION_OK) raisePostgresConnectionError(raw(), name_);
    PQsetNoticeReceiver(raw(), &ignoreNotice, nullptr);
    ++generation_;
    forgotten_.clear();
}

void PostgresSession::setReconnecting(std::function<bool()> mayReconnect, std::function<void()> reconnected) {
    mayReconnect_ = std::move(mayReconnect);
    reconnected_ = std::move(reconnected);
}

void PostgresSession::requireConnection() {
    if (!isOpen()) mkl::throwError(err::ObjectInvalid);
    if (PQstatus(raw()) == CONNECTION_OK) return;
    if (!mayReconnect_ || !mayReconnect_()) mkl::throwError(err::DiskError, {name_});
    PQreset(raw());
    if (PQstatus(raw()) != CONNECTION_OK) raisePostgresConnectionError(raw(), name_);
    ++generation_;
    forgotten_.clear();
    reconnected_();
}

PostgresResult PostgresSession::checked(PGresult* result) {
    PostgresResult owned(result);
    const ExecStatusType status = PQresultStatus(result);
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY) return owned;
    raisePostgresError(raw(), result, name_);
}

PostgresResult PostgresSession::script(const QByteArray& native) {
    requireConnection();
    return checked(PQexec(raw(), native.constData()));
}

PostgresResult PostgresSession::savedScript(const QByteArray& native) {
    requireConnection();
    if (!inTransaction()) return script(native);
    script(savepointText);
    PostgresResult result(PQexec(raw(), native.constData()));
    if (PQtransactionStatus(raw()) == PQTRANS_INERROR)
        undoSavepoint();
    else
        script(releaseText);
    return checked(result.release());
}

void PostgresSession::undoSavepoint() {
    if (PQstatus(raw()) != CONNECTION_OK) return;
    PQclear(PQexec(raw(), (QByteArray("ROLLBACK TO statement;") + releaseText).constData()));
}

PostgresResult PostgresSession::prepare(const QByteArray& statement, const QByteArray& native) {
    requireConnection();
    dropForgotten();
    const bool saved = inTransaction();
    if (saved) script(savepointText);
    PostgresResult made(PQprepare(raw(), statement.constData(), native.constData(), 0, nullptr));
    if (saved) PQresultStatus(made.get()) == PGRES_COMMAND_OK ? void(script(releaseText)) : undoSavepoint();
    checked(made.release());
    return checked(PQdescribePrepared(raw(), statement.constData()));
}

void PostgresSession::forget(const QByteArray& statement, int generation) {
    if (isOpen() && generation == generation_) forgotten_.append(statement);
}

void PostgresSession::dropForgotten() {
    if (forgotten_.isEmpty()) return;
    QByteArray text;
    for (const QByteArray& statement : std::exchange(forgotten_, {}))
        text += "DEALLOCATE " + statement + ';';
    script(text);
}

PostgresResult PostgresSession::run(const QByteArray& statement, const PostgresValues& values) {
    requireConnection();
    return inTransaction() ? runSaved(statement, values) : runPlain(statement, values);
}

PostgresResult PostgresSession::runPlain(const QByteArray& statement, const PostgresValues& values) {
    constexpr int inBinary = 1;
    return checked(PQexecPrepared(raw(), statement.constData(), static_cast<int>(values.values.size()),
                                  values.values.data(), values.lengths.data(), values.formats.data(), inBinary));
}

PostgresResult PostgresSession::runSaved(const QByteArray& statement, const PostgresValues& values) {
    constexpr int inBinary = 1;
    const auto send = [&](const char* text) {
        return PQsendQueryParams(raw(), text, 0, nullptr, nullptr, nullptr, nullptr, 0);
    };
    const bool sent =
        PQenterPipelineMode(raw()) && send(savepointText) &&
        PQsendQueryPrepared(raw(), statement.constData(), static_cast<int>(values.values.size()), values.values.data(),
                            values.lengths.data(), values.formats.data(), inBinary) &&
        send(releaseText) && PQpipelineSync(raw());
    std::vector<PostgresResult> results;
    while (sent) {
        PostgresResult result(PQgetResult(raw()));
        if (!result) {
            if (PQstatus(raw()) != CONNECTION_OK) break;
            continue;
        }
        if (PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC) break;
        results.push_back(std::move(result));
        if (PQstatus(raw()) != CONNECTION_OK) break;
    }
    PQexitPipelineMode(raw());
    if (results.size() < 2) raisePostgresError(raw(), results.empty() ? nullptr : results[0].get(), name_);
    if (PQtransactionStatus(raw()) == PQTRANS_INERROR) undoSavepoint();
    return checked(results[1].release());
}

bool PostgresSession::inTransaction() const {
    if (!isOpen() || PQstatus(raw()) != CONNECTION_OK) return false;
    const PGTransactionStatusType status = PQtransactionStatus(raw());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

} // namespace dao
