// Which tests do not run on a server.
#include "support/LeftOutTests.h"

namespace mkl {

namespace {

constexpr LeftOut leftToFiles[] = {
    {"CatalogueReplica.aCopyOfTheFileHasTheSameDigitUntilItsOwnIsSet", "copies a file"},
    {"CatalogueSchema.otherToolsCanOpenTheFileWhileProgramsWork", "reads the head of a file"},
    {"Tree.figures", "counts the bytes of a file"},
    {"CatalogueCopy.*:CsvReader.*:CsvSource.*:DamagedFiles.*:Demo.*:Import.*:JetText.*:RowStream.*:Sources.*:"
     "VisibleText.*",
     "files, whatever the engine; see ServerCatalogue"},
};

constexpr LeftOut leftToServers[] = {
    {"ServerCatalogue.*", "about a server"},
};

const bool leftOut = leaveToFiles(leftToFiles) || leaveToServers(leftToServers);

} // namespace

} // namespace mkl
