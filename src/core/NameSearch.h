#pragma once
#include "jet/functions/Like.h"

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace mkl {

/// A term and the names that it finds, as the catalogue compares texts: without regard to case. A term with "*" is a
/// pattern (Like); any other one must be the whole name.
class NameSearch {
public:
    explicit NameSearch(const QString& term);

    /// The name as UTF-8. Error 93 where the pattern is not one.
    bool finds(std::string_view name) const;

private:
    std::optional<jet::LikePattern> pattern_;
    std::string term_;
};

} // namespace mkl
