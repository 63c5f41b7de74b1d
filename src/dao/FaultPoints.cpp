#include "dao/FaultPoints.h"

namespace dao {

namespace {

struct Armed {
    StatementFault fault;
    qint64 nth;
    qint64 reached = 0;
};

std::optional<Armed> armed;
std::function<void(QByteArrayView)> statementObserver;
std::function<bool()> lockWait;

} // namespace

void FaultPoints::arm(StatementFault fault, qint64 nth) {
    armed = Armed{fault, nth};
}

void FaultPoints::disarm() {
    armed.reset();
}

qint64 FaultPoints::reached() {
    return armed ? armed->reached : 0;
}

bool FaultPoints::hasFired() {
    return armed && armed->reached >= armed->nth;
}

void FaultPoints::setObserver(std::function<void(QByteArrayView)> observer) {
    statementObserver = std::move(observer);
}

void FaultPoints::setLockWait(std::function<bool()> wait) {
    lockWait = std::move(wait);
}

void FaultPoints::observe(QByteArrayView native) {
    if (statementObserver) statementObserver(native);
}

bool FaultPoints::waitsForLocks() {
    return static_cast<bool>(lockWait);
}

bool FaultPoints::waitForLock() {
    return lockWait && lockWait();
}

std::optional<StatementFault> FaultPoints::next(bool writes) {
    if (!armed || (armed->fault == StatementFault::Constraint && !writes)) return {};
    if (armed->fault == StatementFault::LostConnection && hasFired()) return armed->fault;
    return ++armed->reached == armed->nth ? std::optional(armed->fault) : std::nullopt;
}

} // namespace dao
