#pragma once
#include "browser/ArtCatBrowserEnums.h"

namespace mkl {

class ArtCatBrowserPrivate;

/// Whether an article is active.
class ArticleActivation {
public:
    explicit ArticleActivation(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Writes the state into the article and shows it in the pane and in the other list. False after a failure.
    bool LVActivate(Long ArticleKey, acbPanes Pane, bool Active);

private:
    void activate(Long articleKey, acbPanes pane, bool active);

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
