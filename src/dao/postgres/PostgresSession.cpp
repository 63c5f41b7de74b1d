#include "dao/postgres/PostgresSession.h"

#include "base/Clock.h"
#include "base/DateTime.h"
#include "base/Texts.h"
#include "dao/Errors.h"
#include "dao/postgres/PostgresFaults.h"
#include "dao/postgres/PostgresRights.h"

#include <QElapsedTimer>
#include <QThread>
#include <algorithm>

namespace dao {

namespace {

constexpr const char* savepointText = "SAVEPOINT statement";
constexpr const char* releaseText = "RELEASE statement";

// Both in one round trip. The number is ours; the number of the transaction tells what became of it should the answer
// to its COMMIT get lost.
constexpr const char* beginLockedText = "BEGIN; SELECT pg_current_xact_id()::text FROM pg_advisory_xact_lock(7355609)";
constexpr const char* numberText = "SELECT pg_current_xact_id_if_assigned()::text";

QByteArray numberIn(const PostgresResult& result) {
    const bool hasNumber = PQntuples(result.get()) == 1 && !PQgetisnull(result.get(), 0, 0);
    return hasNumber ? QByteArray(PQgetvalue(result.get(), 0, 0)) : QByteArray();
}

bool asksForTime(const QByteArray& native) {
    return native.contains("mkl_now()") || native.contains("mkl_date()") || native.contains("mkl_time()");
}

QByteArray clockText() {
    return "SELECT set_config('mkl.now', '" + mkl::isoFromDate(mkl::clock().now()).toLatin1() + "', false)";
}

void ignoreNotice(void*, const PGresult*) {}

bool isFailure(const PostgresResult& result) {
    const ExecStatusType status = PQresultStatus(result.get());
    return status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK && status != PGRES_EMPTY_QUERY;
}

} // namespace

PostgresSession::PostgresSession(const QByteArray& url, const ServerAddress& address, const QString& password)
    : context_{address.shown, {}}
    , connection_(connectTo(url, address, password)) {
    PQsetNoticeReceiver(raw(), &ignoreNotice, nullptr);
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
    if (!mayReconnect) raiseServerLost(context_);
    const bool begins = std::exchange(begins_, false);
    reconnect();
    begins_ = begins;
}

// Nobody knows what others have changed in between.
void PostgresSession::reconnect() {
    if (!connectAnew(raw())) raisePostgresConnectionError(raw(), context_);
    ++generation_;
    forgotten_.clear();
    endLocks();
    savepoints_.forget();
    noticed_ = true;
    reconnected_();
}

bool PostgresSession::takeNotices() {
    if (!isOpen()) return false;
    PQconsumeInput(raw());
    while (PGnotify* const notice = PQnotifies(raw())) {
        noticed_ = noticed_ || notice->be_pid != PQbackendPID(raw());
        PQfreemem(notice);
    }
    return std::exchange(noticed_, false);
}

int PostgresSession::connectedGeneration() {
    requireConnection();
    return generation_;
}

PostgresResult PostgresSession::checked(PGresult* result, const QByteArray& native) {
    PostgresResult owned(result);
    if (!isFailure(owned)) return owned;
    if (!native.isEmpty() && !isLost()) raiseMissingRight(raw(), result, native);
    raisePostgresError(raw(), result, context_);
}

PostgresResult PostgresSession::script(const QByteArray& native) {
    requireConnection();
    sendBegin();
    sendSavepoints();
    return checked(asked(native).release());
}

void PostgresSession::sendSavepoints() {
    const QByteArrayList due = savepoints_.settle();
    if (!due.isEmpty()) checked(PQexec(raw(), due.join(';').constData()));
}

PostgresResult PostgresSession::asked(const QByteArray& native) {
    const QByteArray fault = passFaultPoint(raw(), native);
    return PostgresResult(PQexec(raw(), fault.isEmpty() ? native.constData() : fault.constData()));
}

PostgresResult PostgresSession::savedScript(const QByteArray& native) {
    requireConnection();
    if (!inTransaction()) return script(native);
    sendBegin();
    sendSavepoints();
    checked(PQexec(raw(), savepointText));
    PostgresResult result = asked(native);
    if (PQtransactionStatus(raw()) == PQTRANS_INERROR)
        undoOwn();
    else
        checked(PQexec(raw(), releaseText));
    return checked(result.release());
}

void PostgresSession::undoOwn() {
    savepoints_.setOwnPoint();
    undoFailed(false);
}

// Where the transaction began with what has failed it begins anew with what comes next.
void PostgresSession::undoFailed(bool hasBegun) {
    if (PQstatus(raw()) != CONNECTION_OK || PQtransactionStatus(raw()) != PQTRANS_INERROR) return;
    QByteArray text = hasBegun ? QByteArray("ROLLBACK") : "ROLLBACK TO " + savepoints_.point();
    if (savepoints_.hasOwnPoint()) {
        text += QByteArray(";") + releaseText;
        savepoints_.forgetPoint();
    }
    PQclear(PQexec(raw(), text.constData()));
    begins_ = hasBegun;
    endLocks();
}

// The server keeps a prepared statement whatever becomes of a transaction.
PostgresResult PostgresSession::prepare(const QByteArray& statement, const QByteArray& native) {
    requireConnection();
    dropForgotten();
    const bool saved = isInTransaction();
    if (saved) sendSavepoints();
    if (saved) checked(PQexec(raw(), savepointText));
    PostgresResult made(PQprepare(raw(), statement.constData(), native.constData(), 0, nullptr));
    if (saved) isFailure(made) ? undoOwn() : void(checked(PQexec(raw(), releaseText)));
    checked(made.release(), native);
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

// One that was asked in this transaction holds a lock which keeps its table as it is.
PostgresGuards PostgresSession::prepareGuards(const PostgresGuards& guards) {
    PostgresGuards asked;
    for (const auto& guard : guards) {
        if (guard->generation == generation_ && guard->lockedIn == locks_) continue;
        asked.push_back(guard);
        if (guard->generation == generation_) continue;
        prepare(guard->statement, guard->native);
        guard->generation = generation_;
    }
    return asked;
}

void PostgresSession::openPoint(PostgresPipeline& pipeline) {
    for (const QByteArray& text : savepoints_.takeDue())
        pipeline.send(text.constData());
    if (!savepoints_.point().isEmpty()) return;
    pipeline.send(savepointText);
    savepoints_.setOwnPoint();
}

PostgresResult PostgresSession::run(const PostgresCall& call, const PostgresValues& values,
                                    const PostgresGuards& guards, const PostgresRowSink& sink) {
    requireConnection();
    const PostgresGuards asked = prepareGuards(guards);
    const bool begins = std::exchange(begins_, false), saved = !begins && isInTransaction();
    if (begins) observeFaultPoint("BEGIN");
    const QByteArray fault = passFaultPoint(raw(), call.native);
    std::vector<PostgresResult> results;
    size_t own = 0;
    try {
        PostgresPipeline pipeline(raw());
        if (begins) pipeline.send("BEGIN");
        if (saved) openPoint(pipeline);
        if (asksForTime(call.native)) pipeline.send(clockText().constData());
        for (const auto& guard : asked)
            pipeline.sendPrepared(guard->statement, {});
        own = pipeline.size();
        if (sink) pipeline.streamNext(sink);
        fault.isEmpty() ? pipeline.sendPrepared(call.statement, values) : pipeline.send(fault.constData());
        const bool changes = !call.native.startsWith("SELECT ");
        if (saved && changes && savepoints_.hasOwnPoint()) pipeline.send(releaseText);
        if (begins) pipeline.send(numberText);
        results = pipeline.results();
        if (changes && PQtransactionStatus(raw()) == PQTRANS_INTRANS) savepoints_.forgetPoint();
    } catch (...) {
        undoFailed(begins);
        throw;
    }
    if (results.size() <= own) raisePostgresError(raw(), results.empty() ? nullptr : results.back().get(), context_);
    undoFailed(begins);
    const auto guarded = std::span(results).first(own).last(asked.size());
    const auto failed = std::ranges::find_if(guarded, &isFailure);
    if (failed != guarded.end() && !isLost()) {
        raiseMissingRight(raw(), failed->get(), call.native);
        return nullptr;
    }
    if (begins && results.size() > own + 1) transactionNumber_ = numberIn(results[own + 1]);
    if (isInTransaction())
        for (const auto& guard : asked)
            guard->lockedIn = locks_;
    return checked(results[own].release(), call.native);
}

void PostgresSession::begin() {
    requireConnection();
    begins_ = true;
    savepoints_.forget();
    endLocks();
    transactionNumber_.clear();
}

void PostgresSession::beginLocked() {
    requireConnection();
    endLocks();
    const PostgresResult begun = asked(beginLockedText);
    savepoints_.forget();
    if (isFailure(begun) && isInTransaction()) PQclear(PQexec(raw(), "ROLLBACK"));
    if (isFailure(begun)) raisePostgresError(raw(), begun.get(), context_);
    transactionNumber_ = numberIn(begun);
}

void PostgresSession::sendBegin() {
    if (!std::exchange(begins_, false)) return;
    observeFaultPoint("BEGIN");
    checked(PQexec(raw(), "BEGIN"));
}

void PostgresSession::savepoint(const QByteArray& name) {
    requireConnection();
    sendBegin();
    observeFaultPoint("SAVEPOINT " + name);
    savepoints_.set(name);
}

void PostgresSession::release(const QByteArray& name) {
    requireConnection();
    observeFaultPoint("RELEASE " + name);
    savepoints_.release(name);
}

void PostgresSession::rollbackTo(const QByteArray& name) {
    endLocks();
    script("ROLLBACK TO " + name);
}

void PostgresSession::commit() {
    endLocks();
    if (std::exchange(begins_, false)) return; // nothing was done in it
    if (isLost()) raiseServerLost(context_);
    PostgresResult result = asked("COMMIT");
    savepoints_.forget();
    if (isLost()) {
        if (!isCommitted()) raiseServerLost(context_);
        return;
    }
    if (qstrcmp(PQcmdStatus(checked(result.release()).get()), "COMMIT") != 0) mkl::throwError(err::TransactionGivenUp);
}

// The server may still be busy with it, or be just coming up again.
bool PostgresSession::isCommitted() {
    constexpr int pause = 50;
    const QByteArray question = "SELECT pg_xact_status('" + transactionNumber_ + "'::xid8)";
    QElapsedTimer timer;
    timer.start();
    for (; !transactionNumber_.isEmpty() && timer.elapsed() < patience_; QThread::msleep(pause)) {
        try {
            if (isLost()) reconnect();
            const PostgresResult status = checked(PQexec(raw(), question.constData()));
            const QByteArray answer = PQgetvalue(status.get(), 0, 0);
            if (answer == "committed" || answer == "aborted") return answer == "committed";
        } catch (const mkl::RunTimeError&) {
            if (!isLost()) throw;
        }
    }
    throw mkl::RunTimeError(err::DiskError, mkl::text(mkl::TextId::CommitUnknown));
}

void PostgresSession::rollback() {
    savepoints_.forget(); // they go with it
    endLocks();
    if (!std::exchange(begins_, false)) script("ROLLBACK");
    savepoints_.forget();
}

bool PostgresSession::isInTransaction() const {
    if (!isOpen() || PQstatus(raw()) != CONNECTION_OK) return false;
    const PGTransactionStatusType status = PQtransactionStatus(raw());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

} // namespace dao
