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

    /// The menu entries. Those for one row do what their captions say.
    void kLV_Activate();
    void KLVArt_Activate();
    void kLV_ActivateAll();
    void kLV_DeActivateAll();

private:
    void activateSelected(bool active);
    void activate(Long articleKey, acbPanes pane, bool active);

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
