#pragma once
// The way from a browser to what stands behind it.
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"

namespace mkl {

struct BrowserAccess {
    static ArtCatBrowserPrivate& hub(const ArtCatBrowser& browser) { return *browser.d_; }
};

} // namespace mkl
