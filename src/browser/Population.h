#pragma once
#include "base/types.h"

namespace mkl {

class ArtCatBrowserPrivate;

/// Bringing the control to life.
class Population {
public:
    explicit Population(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Reads the panes. Result: number of categories in the tree; 0 after a failure, which is reported.
    Long Populate();
    /// Closes the record set on ARTKAT; a failure is passed over.
    void CloseArtKatTable();

private:
    Long populate();
    Long Article_MaxNo() const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
