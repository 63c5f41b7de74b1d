#pragma once
#include <sqlite3.h>

namespace dao {

/// Answers Like for two texts by their bytes, the pattern kept ready for the statement's next rows. False where the
/// general function must answer: other values, Null, a broken pattern.
bool answerLike(sqlite3_context* context, sqlite3_value** values);

} // namespace dao
