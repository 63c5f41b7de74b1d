// Which tests do not run on a server.
#include "support/LeftOutTests.h"

namespace mkl {

namespace {

constexpr LeftOut leftToFiles[] = {
    {"ChangeNoticeTest.populateOfTheHostTakesItAway",
     "a server may tell of a change behind the Populate that has read it"},
};

const bool leftOut = leaveToFiles(leftToFiles);

} // namespace

} // namespace mkl
