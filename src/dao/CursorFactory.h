#pragma once
#include "dao/Cursor.h"
#include "dao/QuerySource.h"

namespace dao {

class DynasetRows;

/// A cursor of that type (2, 4 or 8) over the rows of the statement, with its errors at the opening.
std::unique_ptr<Cursor> openCursor(const QuerySource& source, Long type);

/// The rows of an updatable statement; nullptr if it is none.
std::shared_ptr<DynasetRows> dynasetRows(const QuerySource& source);

} // namespace dao
