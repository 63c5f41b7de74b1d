#pragma once
#include "base/types.h"

#include <QString>

namespace mkl {

class ArtCatBrowserPrivate;
class ListView;

/// The two article lists: pool and articles of the selected category.
class ArticlePanes {
public:
    explicit ArticlePanes(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Gives the numbers of both lists the room that they need and the names what is left. Does nothing before
    /// Populate, which finds out how long a number is.
    void AdjustColumnWidths();

private:
    Single numberWidth(const QString& pattern) const;
    void fillWithLastColumn(ListView& list) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
