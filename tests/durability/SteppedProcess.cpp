#include "SteppedProcess.h"

#include "dao/FaultPoints.h"

#include <csignal>
#include <cstring>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr char atStatement = 's', waiting = 'w', ended = 'e';

template<size_t Size>
void copyTo(char (&to)[Size], QByteArrayView text) {
    std::memset(to, 0, Size);
    std::memcpy(to, text.data(), std::min(Size - 1, static_cast<size_t>(text.size())));
}

QByteArray resultOf(const CommandHost& host) {
    QStringList reports;
    for (const ErrorReport& report : host.reports())
        reports.append(u"%1 %2 %3"_s.arg(report.code).arg(report.procName).arg(report.number));
    return u"%1; %2; %3"_s.arg(reports.join(u", "))
        .arg(host.browser().Edited())
        .arg(host.workspace().transactionDepth())
        .toUtf8();
}

} // namespace

SteppedProcess::SteppedProcess(const BrowserCommand& command, const QString& file, Locks locks) {
    if (pipe(events_) != 0 || pipe(tokens_) != 0) throw std::runtime_error("no pipes");
    child_ = fork();
    if (child_ == 0) runInChild(command, file, locks);
    if (child_ < 0) throw std::runtime_error("no child process");
    listen();
}

SteppedProcess::~SteppedProcess() {
    if (state_ != State::Ended) kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
    for (const int end : {events_[0], events_[1], tokens_[0], tokens_[1]})
        close(end);
}

void SteppedProcess::runInChild(const BrowserCommand& command, const QString& file, Locks locks) {
    prctl(PR_SET_PDEATHSIG, SIGKILL); // nobody else would end it
    bool inTransaction = false;
    if (locks == Locks::Stop) dao::FaultPoints::setLockWait([&] { return inTransaction && stop(waiting); });
    {
        ScriptedWorld world;
        CommandHost host(world, file, {.busyTimeoutMilliseconds = 60'000});
        command.screen(host);
        dao::FaultPoints::setObserver([&](QByteArrayView native) {
            inTransaction = inTransaction || native.startsWith("BEGIN");
            copyTo(shared_->statement, native);
            if (inTransaction) stop(atStatement);
        });
        command.run(host);
        dao::FaultPoints::setObserver({});
        copyTo(shared_->result, resultOf(host));
    }
    copyTo(shared_->statement, "");
    (void)!write(events_[1], &ended, 1);
    _exit(0);
}

/// Tells the event and stands still. False if a wait is to end.
bool SteppedProcess::stop(char event) {
    char token = 0;
    if (write(events_[1], &event, 1) != 1 || read(tokens_[0], &token, 1) != 1) _exit(1);
    return token == 'g';
}

void SteppedProcess::send(char token) {
    if (state_ == State::Ended || write(tokens_[1], &token, 1) != 1) throw std::logic_error("the program has ended");
}

void SteppedProcess::go(char token) {
    send(token);
    listen();
}

void SteppedProcess::listen() {
    char event = 0;
    if (events_[1] >= 0) {
        close(events_[1]); // so that the end of the child is heard
        events_[1] = -1;
    }
    if (read(events_[0], &event, 1) != 1) throw std::runtime_error("the program ended by itself");
    state_ = event == ended ? State::Ended : event == waiting ? State::Waiting : State::AtStatement;
}

} // namespace mkl
