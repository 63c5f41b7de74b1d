#pragma once
#include "browser/ArtCatBrowserEnums.h"
#include "dao/Database.h"

namespace mkl {

/// What the program tells of an article or, of the tree, a category. Empty where another program has deleted it. Errors
/// of the data layer go up.
QString propertiesText(dao::Database& catalogue, Long key, acbPanes pane);

} // namespace mkl
