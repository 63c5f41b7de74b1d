#pragma once
// A program of its own with a browser, which gives one command and stops before every statement of it, from the begin
// of its transaction on, until it is told to go on.
#include "BrowserCommand.h"
#include "support/SharedMemory.h"

#include <sys/types.h>

namespace mkl {

class SteppedProcess {
public:
    enum class State : quint8 {
        AtStatement, ///< before a statement
        Waiting,     ///< another program's lock is in the way
        Ended,
    };

    enum class Locks : quint8 {
        Stop, ///< is Waiting until the next step
        Wait, ///< the engine tries by itself, as in a real program: no step ends before
    };

    /// Starts the program. It reads its panes and runs the command up to its transaction.
    SteppedProcess(const BrowserCommand& command, const QString& file, Locks locks = Locks::Stop);
    /// Ends it wherever it stands.
    ~SteppedProcess();
    Q_DISABLE_COPY_MOVE(SteppedProcess)

    State state() const { return state_; }
    QByteArray statement() const { return shared_->statement; } ///< that it stands before or waits in
    /// Runs the statement, or tries the lock again.
    void step() { go('g'); }
    /// The two halves of a step.
    void start() { send('g'); }
    void await() { listen(); }
    /// Ends the wait for the lock, as at the end of the busy timeout.
    void giveUp() { go('x'); }

    /// What it left: "reports; Edited; levels of transaction". Only when it has ended.
    QByteArray result() const { return shared_->result; }

private:
    struct Shared {
        char statement[200] = {};
        char result[600] = {};
    };

    [[noreturn]] void runInChild(const BrowserCommand& command, const QString& file, Locks locks);
    bool stop(char event);
    void send(char token);
    void go(char token);
    void listen();

    SharedMemory<Shared> shared_;
    int events_[2] = {-1, -1}; ///< from the child
    int tokens_[2] = {-1, -1}; ///< to it
    pid_t child_ = -1;
    State state_ = State::AtStatement;
};

} // namespace mkl
