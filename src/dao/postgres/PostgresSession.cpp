#include "dao/postgres/PostgresSession.h"

#include "dao/Errors.h"

#include <algorithm>

namespace dao {

namespace {

// Of our own statements only; no level of Transaction bears it.
constexpr const char* savepointText = "SAVEPOINT statement";
constexpr const char* releaseText = "RELEASE statement";

void ignoreNotice(void*, const PGresult*) {}

bool isFailure(const PostgresResult& result) {
    const ExecStatusType status = PQresultStatus(result.get());
    return status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK && status != PGRES_EMPTY_QUERY;
}

} // namespace

PostgresSession::PostgresSession(QByteArray url, QString name)
    : url_(std::move(url))
    , context_{std::move(name), {}} {
    connect();
}

void PostgresSession::connect() {
    connection_.reset(PQconnectdb(url_.constData()));
    if (PQstatus(raw()) != CONNECTION_OK) raisePostgresConnectionError(raw(), context_);
    PQsetNoticeReceiver(raw(), &ignoreNotice, nullptr);
    ++generation_;
    forgotten_.clear();
}

void PostgresSession::setReconnecting(std::function<bool()> mayReconnect, std::function<void()> reconnected) {
    mayReconnect_ = std::move(mayReconnect);
    reconnected_ = std::move(reconnected);
}

void PostgresSession::setKeyColumns(std::function<bool(const QString&, const QString&)> isKeyColumn) {
    context_.isKeyColumn = std::move(isKeyColumn);
}

void PostgresSession::requireConnection() {
    if (!isOpen()) mkl::throwError(err::ObjectInvalid);
    if (PQstatus(raw()) == CONNECTION_OK) return;
    const bool mayReconnect = mayReconnect_ && (begins_ || mayReconnect_());
    if (!mayReconnect) mkl::throwError(err::DiskError, {context_.name});
    PQreset(raw());
    if (PQstatus(raw()) != CONNECTION_OK) raisePostgresConnectionError(raw(), context_);
    ++generation_;
    forgotten_.clear();
    const bool begins = std::exchange(begins_, false);
    reconnected_();
    begins_ = begins;
}

int PostgresSession::connectedGeneration() {
    requireConnection();
    return generation_;
}

PostgresResult PostgresSession::checked(PGresult* result) {
    PostgresResult owned(result);
    if (isFailure(owned)) raisePostgresError(raw(), result, context_);
    return owned;
}

PostgresResult PostgresSession::script(const QByteArray& native) {
    requireConnection();
    sendBegin();
    return checked(PQexec(raw(), native.constData()));
}

PostgresResult PostgresSession::savedScript(const QByteArray& native) {
    requireConnection();
    if (!inTransaction()) return script(native);
    script(savepointText);
    PostgresResult result(PQexec(raw(), native.constData()));
    if (PQtransactionStatus(raw()) == PQTRANS_INERROR)
        undoFailed(false);
    else
        script(releaseText);
    return checked(result.release());
}

// Where the transaction began with what has failed it begins anew with what comes next.
void PostgresSession::undoFailed(bool hasBegun) {
    if (PQstatus(raw()) != CONNECTION_OK) return;
    const QByteArray text = hasBegun ? QByteArray("ROLLBACK") : QByteArray("ROLLBACK TO statement;") + releaseText;
    PQclear(PQexec(raw(), text.constData()));
    begins_ = hasBegun;
}

// The server keeps a prepared statement whatever becomes of a transaction.
PostgresResult PostgresSession::prepare(const QByteArray& statement, const QByteArray& native) {
    requireConnection();
    dropForgotten();
    const bool saved = isInTransaction();
    if (saved) script(savepointText);
    PostgresResult made(PQprepare(raw(), statement.constData(), native.constData(), 0, nullptr));
    if (saved) isFailure(made) ? undoFailed(false) : void(script(releaseText));
    checked(made.release());
    return checked(PQdescribePrepared(raw(), statement.constData()));
}

void PostgresSession::forget(const QByteArray& statement, int generation) {
    if (isOpen() && generation == generation_) forgotten_.append(statement);
}

void PostgresSession::dropForgotten() {
    if (forgotten_.isEmpty() || (isInTransaction() && PQtransactionStatus(raw()) == PQTRANS_INERROR)) return;
    QByteArray text;
    for (const QByteArray& statement : std::exchange(forgotten_, {}))
        text += "DEALLOCATE " + statement + ';';
    checked(PQexec(raw(), text.constData()));
}

void PostgresSession::prepareGuards(const PostgresGuards& guards) {
    for (const auto& guard : guards) {
        if (guard->generation == generation_) continue;
        prepare(guard->statement, guard->native);
        guard->generation = generation_;
    }
}

PostgresResult PostgresSession::run(const QByteArray& statement, const PostgresValues& values,
                                    const PostgresGuards& guards, const PostgresRowSink& sink) {
    requireConnection();
    prepareGuards(guards);
    const bool begins = std::exchange(begins_, false), saved = !begins && isInTransaction();
    std::vector<PostgresResult> results;
    size_t own = 0;
    const auto undo = [&] {
        if (PQtransactionStatus(raw()) == PQTRANS_INERROR) undoFailed(begins);
    };
    try {
        PostgresPipeline pipeline(raw());
        if (begins) pipeline.send("BEGIN");
        if (saved) pipeline.send(savepointText);
        for (const auto& guard : guards)
            pipeline.sendPrepared(guard->statement, {});
        own = pipeline.size();
        if (sink) pipeline.streamNext(sink);
        pipeline.sendPrepared(statement, values);
        if (saved) pipeline.send(releaseText);
        results = pipeline.results();
    } catch (...) {
        undo();
        throw;
    }
    if (results.size() <= own) raisePostgresError(raw(), results.empty() ? nullptr : results.back().get(), context_);
    undo();
    const auto guarded = std::span(results).first(own).last(guards.size());
    const bool isLost = PQstatus(raw()) != CONNECTION_OK;
    if (!isLost && std::ranges::any_of(guarded, &isFailure)) return nullptr;
    return checked(results[own].release());
}

void PostgresSession::begin() {
    requireConnection();
    begins_ = true;
}

void PostgresSession::sendBegin() {
    if (std::exchange(begins_, false)) checked(PQexec(raw(), "BEGIN"));
}

void PostgresSession::savepoint(const QByteArray& name) {
    requireConnection();
    const QByteArray first = std::exchange(begins_, false) ? "BEGIN;" : "";
    script(first + "SAVEPOINT " + name);
}

void PostgresSession::commit() {
    if (std::exchange(begins_, false)) return; // nothing was done in it
    const PostgresResult result = script("COMMIT");
    if (qstrcmp(PQcmdStatus(result.get()), "COMMIT") != 0) mkl::throwError(err::TransactionGivenUp);
}

void PostgresSession::rollback() {
    if (!std::exchange(begins_, false)) script("ROLLBACK");
}

bool PostgresSession::isInTransaction() const {
    if (!isOpen() || PQstatus(raw()) != CONNECTION_OK) return false;
    const PGTransactionStatusType status = PQtransactionStatus(raw());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

} // namespace dao
