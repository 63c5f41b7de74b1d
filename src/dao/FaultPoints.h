#pragma once
// Only where MKL_FAULT_POINTS is defined, which a release never does: the k-th statement of the process fails as if
// the engine had failed, so that tests can see what is left of a command that broke off there. Tests can also watch the
// statements and put another action in place of waiting for a lock, to let several programs take turns.
#include <QByteArrayView>
#include <QtGlobal>
#include <functional>
#include <optional>

namespace dao {

/// What goes wrong, with the number that the layers above get.
enum class StatementFault : quint8 {
    Constraint,     ///< 3022; statements that write alone
    Busy,           ///< 3260
    DiskFull,       ///< 3026, and the engine gives its transaction up
    Interrupt,      ///< 3059; given up as well where the statement writes
    LostConnection, ///< 3043, the transaction is gone, and so is every later statement until disarm()
};

class FaultPoints {
public:
    /// The nth statement from now on that can fail so, counted from 1, does.
    static void arm(StatementFault fault, qint64 nth);
    static void disarm();
    /// Points passed since arm(), the one that failed included.
    static qint64 reached();
    static bool hasFired();

    /// Is told every statement that is about to run, in the engine's language; an empty one ends it.
    static void setObserver(std::function<void(QByteArrayView native)> observer);
    /// Stands in place of the busy timeout of connections opened from now on: called whenever another program's lock
    /// is in the way, true tries again, false gives up with 3260. An empty one ends it.
    static void setLockWait(std::function<bool()> wait);

    /// For the engine's folder, before each statement.
    static void observe(QByteArrayView native);
    /// For the engine's folder, before each statement: how it has to fail, if at all.
    static std::optional<StatementFault> next(bool writes);
    /// For the engine's folder: whether a lock is waited for here.
    static bool waitsForLocks();
    static bool waitForLock();
};

} // namespace dao
