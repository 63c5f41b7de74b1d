#include "support/FaultVfs.h"

#include <csignal>
#include <sqlite3.h>
#include <unistd.h>

namespace mkl {

namespace {

struct Armed {
    bool active = false;
    FileFault fault = FileFault::Kill;
    qint64 nth = 0;
    qint64 reached = 0;
};

Armed armed;

sqlite3_vfs* system() {
    static sqlite3_vfs* const found = sqlite3_vfs_find(nullptr);
    return found;
}

[[noreturn]] void endProcess() {
    kill(getpid(), SIGKILL);
    for (;;)
        pause();
}

/// The code with which the call has to fail, SQLITE_OK to go on.
int nextPoint(int codeOfCall) {
    if (!armed.active || ++armed.reached != armed.nth) return SQLITE_OK;
    if (armed.fault == FileFault::Kill || armed.fault == FileFault::TornWrite) endProcess();
    return armed.fault == FileFault::DiskFull && codeOfCall == SQLITE_IOERR_WRITE ? SQLITE_FULL : codeOfCall;
}

bool tearsNext() {
    return armed.active && armed.fault == FileFault::TornWrite && armed.reached + 1 == armed.nth;
}

/// A file of ours; that of the system stands right behind it.
struct File {
    sqlite3_file base;

    static sqlite3_file* real(sqlite3_file* file) {
        return reinterpret_cast<sqlite3_file*>(reinterpret_cast<File*>(file) + 1);
    }
};

int closeFile(sqlite3_file* file) {
    return File::real(file)->pMethods->xClose(File::real(file));
}

int readFile(sqlite3_file* file, void* to, int size, sqlite3_int64 offset) {
    return File::real(file)->pMethods->xRead(File::real(file), to, size, offset);
}

int writeFile(sqlite3_file* file, const void* from, int size, sqlite3_int64 offset) {
    sqlite3_file* real = File::real(file);
    if (tearsNext()) {
        real->pMethods->xWrite(real, from, size / 2, offset);
        endProcess();
    }
    if (const int code = nextPoint(SQLITE_IOERR_WRITE)) return code;
    return real->pMethods->xWrite(real, from, size, offset);
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    if (const int code = nextPoint(SQLITE_IOERR_TRUNCATE)) return code;
    return File::real(file)->pMethods->xTruncate(File::real(file), size);
}

int syncFile(sqlite3_file* /*file*/, int /*flags*/) {
    return nextPoint(SQLITE_IOERR_FSYNC);
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
    return File::real(file)->pMethods->xFileSize(File::real(file), size);
}

int lockFile(sqlite3_file* file, int lock) {
    return File::real(file)->pMethods->xLock(File::real(file), lock);
}

int unlockFile(sqlite3_file* file, int lock) {
    return File::real(file)->pMethods->xUnlock(File::real(file), lock);
}

int checkReservedLock(sqlite3_file* file, int* reserved) {
    return File::real(file)->pMethods->xCheckReservedLock(File::real(file), reserved);
}

int fileControl(sqlite3_file* file, int operation, void* argument) {
    return File::real(file)->pMethods->xFileControl(File::real(file), operation, argument);
}

int sectorSize(sqlite3_file* file) {
    return File::real(file)->pMethods->xSectorSize(File::real(file));
}

int deviceCharacteristics(sqlite3_file* file) {
    return File::real(file)->pMethods->xDeviceCharacteristics(File::real(file));
}

// The shared memory of the write-ahead log is no part of what must survive: it goes through as it is.
int mapShared(sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
    return File::real(file)->pMethods->xShmMap(File::real(file), region, size, extend, memory);
}

int lockShared(sqlite3_file* file, int offset, int count, int flags) {
    return File::real(file)->pMethods->xShmLock(File::real(file), offset, count, flags);
}

void sharedBarrier(sqlite3_file* file) {
    File::real(file)->pMethods->xShmBarrier(File::real(file));
}

int unmapShared(sqlite3_file* file, int remove) {
    return File::real(file)->pMethods->xShmUnmap(File::real(file), remove);
}

// Version 2: with shared memory, without mapped reads, so that every change goes through writeFile.
const sqlite3_io_methods methods = {2,
                                    closeFile,
                                    readFile,
                                    writeFile,
                                    truncateFile,
                                    syncFile,
                                    fileSize,
                                    lockFile,
                                    unlockFile,
                                    checkReservedLock,
                                    fileControl,
                                    sectorSize,
                                    deviceCharacteristics,
                                    mapShared,
                                    lockShared,
                                    sharedBarrier,
                                    unmapShared,
                                    nullptr,
                                    nullptr};

int openFile(sqlite3_vfs* /*vfs*/, const char* path, sqlite3_file* file, int flags, int* outFlags) {
    file->pMethods = nullptr;
    const int code = system()->xOpen(system(), path, File::real(file), flags, outFlags);
    if (code == SQLITE_OK) file->pMethods = &methods;
    return code;
}

int removeFile(sqlite3_vfs* /*vfs*/, const char* path, int /*syncFolder*/) {
    if (const int code = nextPoint(SQLITE_IOERR_DELETE)) return code;
    return system()->xDelete(system(), path, 0);
}

} // namespace

void FaultVfs::install() {
    if (sqlite3_vfs_find(name)) return;
    static sqlite3_vfs vfs = *system();
    vfs.zName = name;
    vfs.szOsFile = static_cast<int>(sizeof(File)) + system()->szOsFile;
    vfs.pNext = nullptr;
    vfs.xOpen = openFile;
    vfs.xDelete = removeFile;
    sqlite3_vfs_register(&vfs, 0);
}

void FaultVfs::installAsDefault() {
    install();
    sqlite3_vfs_register(sqlite3_vfs_find(name), 1);
}

void FaultVfs::arm(FileFault fault, qint64 nth) {
    armed = {true, fault, nth, 0};
}

void FaultVfs::disarm() {
    armed.active = false;
}

qint64 FaultVfs::reached() {
    return armed.reached;
}

bool FaultVfs::hasFired() {
    return armed.active && armed.reached >= armed.nth;
}

} // namespace mkl
