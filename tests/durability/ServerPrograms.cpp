// Which tests do not run on a server, and which run there alone.
#include "support/LeftOutTests.h"

namespace mkl {

namespace {

constexpr LeftOut leftToFiles[] = {
    {"Durability.TheProcessThatForksHasOneThread", "about processes that fork in the middle of a command"},
    {"LargeCopy.*", "kills a program in the middle of its writes to a file"},
    {"LockWait.*", "a file is locked by single writes too"},
    {"*TwoPrograms*", "lets programs take turns at the locks of a file"},
    {"*Stress*", "see ServerLoad"},
};

constexpr LeftOut leftToServers[] = {
    {"ServerLoad.*", "about a server"},
};

const bool leftOut = leaveToFiles(leftToFiles) || leaveToServers(leftToServers);

} // namespace

} // namespace mkl
