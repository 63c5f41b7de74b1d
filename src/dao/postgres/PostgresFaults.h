#pragma once
#include <QByteArray>
#include <libpq-fe.h>

namespace dao {

/// A point where a test may let a statement fail (see FaultPoints): what is to be sent in its place, empty for the
/// statement itself. A lost connection is really lost then.
#ifdef MKL_FAULT_POINTS
QByteArray passFaultPoint(PGconn* connection, const QByteArray& native);
/// Shows tests a statement that goes with the next one and fails only with that.
void observeFaultPoint(QByteArrayView native);
#else
inline QByteArray passFaultPoint(PGconn* /*connection*/, const QByteArray& /*native*/) {
    return {};
}
inline void observeFaultPoint(QByteArrayView /*native*/) {}
#endif

} // namespace dao
