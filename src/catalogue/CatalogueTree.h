#pragma once
#include "dao/Database.h"

#include <QString>
#include <functional>

namespace mkl {

/// The category tree as a text picture: one line per category, two blanks per level,
/// "41 Schrauben: 1 A, 2 B" with the articles in the order of their positions.
struct CatalogueTree {
    bool articles = true;
    int levels = 0; ///< how deep to go; 0 for all
    Variant root;   ///< key of the category whose subtree is wanted; Null for the whole forest

    /// Hands over line by line, without line ends. Categories that no root reaches are not in it;
    /// returns their number. 3021 if there is no category of the key in root.
    qint64 write(dao::Database& database, const std::function<void(const QString& line)>& line) const;
};

} // namespace mkl
