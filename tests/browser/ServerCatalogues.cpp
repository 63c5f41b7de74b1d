// Which tests do not run on a server.
#include "support/LeftOutTests.h"

namespace mkl {

namespace {

constexpr LeftOut leftToFiles[] = {
    {"ChangeNotice*", "a server tells of changes a moment after they were stored; see ServerWindow"},
};

const bool leftOut = leaveToFiles(leftToFiles);

} // namespace

} // namespace mkl
