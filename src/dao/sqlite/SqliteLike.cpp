#include "dao/sqlite/SqliteLike.h"

#include "dao/sqlite/SqliteFunctions.h"
#include "jet/functions/Like.h"

#include <memory>

namespace dao {

namespace {

constexpr int patternArgument = 1;

// A subtype says that the text stands for a date or the like.
bool isText(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_TEXT && sqlite3_value_subtype(value) == 0;
}

QByteArrayView bytesOf(sqlite3_value* value) {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, sqlite3_value_bytes(value)};
}

void deletePattern(void* pattern) {
    delete static_cast<jet::LikePattern*>(pattern);
}

// The engine keeps it as long as the argument is the same for all rows; it may also refuse to keep it.
const jet::LikePattern* keptPattern(sqlite3_context* context, sqlite3_value* value) {
    if (const void* kept = sqlite3_get_auxdata(context, patternArgument))
        return static_cast<const jet::LikePattern*>(kept);
    auto made = std::make_unique<jet::LikePattern>(QString::fromUtf8(bytesOf(value)));
    sqlite3_set_auxdata(context, patternArgument, made.release(), &deletePattern);
    return static_cast<const jet::LikePattern*>(sqlite3_get_auxdata(context, patternArgument));
}

} // namespace

bool answerLike(sqlite3_context* context, sqlite3_value** values) {
    if (!isText(values[0]) || !isText(values[patternArgument])) return false;
    const jet::LikePattern* const pattern = keptPattern(context, values[patternArgument]);
    if (!pattern || pattern->isBroken()) return false;
    sqlite3_result_int(context, pattern->matchesUtf8(bytesOf(values[0])) ? -1 : 0);
    sqlite3_result_subtype(context, SqliteFunctions::subtypeFor(jet::ColumnType::Boolean));
    return true;
}

} // namespace dao
