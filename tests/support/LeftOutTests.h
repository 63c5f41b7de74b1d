#pragma once
// Tests that do not run on one of the engines, with the reason.
#include <QByteArray>
#include <span>

namespace mkl {

struct LeftOut {
    const char* tests; ///< a pattern
    const char* reason;
};

/// Patterns of tests that are not to run where the command line names none, each with a colon behind it.
QByteArray& leftOutTests();

/// Leaves the tests out where all run on a server, and says so. To be called before the program begins.
bool leaveToFiles(std::span<const LeftOut> tests);
/// Leaves the tests out where all run on files.
bool leaveToServers(std::span<const LeftOut> tests);

} // namespace mkl
