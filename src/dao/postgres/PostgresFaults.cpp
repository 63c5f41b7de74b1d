#include "dao/postgres/PostgresFaults.h"

#include "dao/FaultPoints.h"

#include <algorithm>

namespace dao {

namespace {

bool beginsWith(const QByteArray& native, std::initializer_list<QByteArrayView> verbs) {
    return std::ranges::any_of(verbs, [&](QByteArrayView verb) { return native.startsWith(verb); });
}

const char* stateOf(StatementFault fault) {
    switch (fault) {
    case StatementFault::Constraint: return "23505";
    case StatementFault::Busy: return "55P03";
    case StatementFault::DiskFull: return "53100";
    case StatementFault::Interrupt: return "57014";
    case StatementFault::LostConnection: break;
    }
    return "08006";
}

} // namespace

// The server raises it, so that its transaction is what it is after any error.
QByteArray passFaultPoint(PGconn* connection, const QByteArray& native) {
    FaultPoints::observe(native);
    // What cannot fail but with the connection, as the statement behind it does.
    if (beginsWith(native, {"ROLLBACK", "SAVEPOINT", "RELEASE"})) return {};
    const auto fault = FaultPoints::next(beginsWith(native, {"INSERT", "UPDATE", "DELETE", "CREATE", "COMMIT"}));
    if (!fault) return {};
    if (*fault != StatementFault::LostConnection)
        return QByteArray("DO $$ BEGIN RAISE EXCEPTION USING ERRCODE = '") + stateOf(*fault) + "'; END $$";
    PQclear(PQexec(connection, "SELECT pg_terminate_backend(pg_backend_pid())"));
    return {};
}

void observeFaultPoint(QByteArrayView native) {
    FaultPoints::observe(native);
}

} // namespace dao
