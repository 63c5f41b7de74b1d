#pragma once
// A file layer of SQLite that lets the k-th call which changes a file fail: write, sync, truncate or unlink of the
// database, its journal or its write-ahead log. Use it by name: OpenOptions{.vfs = FaultVfs::name}.
//
// The crash that Kill and TornWrite play is that of the process: what was written before stays, synced or not. Syncs
// are points, but do not reach the disk, since nothing here outlives the machine.
#include <QByteArray>
#include <QtGlobal>

namespace mkl {

enum class FileFault : quint8 {
    Kill,      ///< the process ends by SIGKILL in place of the call
    TornWrite, ///< half of the bytes are written, then as Kill; other calls just as Kill
    IoError,   ///< the call fails, nothing is done
    DiskFull,  ///< the same for lack of room: a write fails as such, the other calls as the system would have it
};

class FaultVfs {
public:
    static constexpr const char* name = "mkl-fault";

    /// Makes it known to the engine; again is harmless.
    static void install();
    /// The same, and files opened without a name of a layer use it too: disarmed, it is the system's without syncs.
    static void installAsDefault();
    /// The nth call from now on fails, counted from 1.
    static void arm(FileFault fault, qint64 nth);
    static void disarm();
    /// Calls since arm(), the one that failed included.
    static qint64 reached();
    static bool hasFired();
};

} // namespace mkl
