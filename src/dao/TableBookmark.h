#pragma once
#include "base/Variant.h"
#include "dao/RowEditor.h"

#include <optional>

namespace dao {

/// Bookmarks of a table: the key of a row, with the number of the record set and its clones in front. So a bookmark
/// holds though rows come and go around it.
class TableBookmark {
public:
    /// A number that no other record set has.
    static quint64 newGeneration();

    static mkl::Variant encode(quint64 generation, const RowKey& key);
    /// Nothing for a value that is no bookmark of that generation.
    static std::optional<RowKey> decode(const mkl::Variant& bookmark, quint64 generation);
};

} // namespace dao
