#pragma once
#include "bench/Pool.h"
#include "browser/ArtCatBrowser.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"

#include <QApplication>

namespace bench {

/// A browser on show whose pool is a million articles, or as many as told.
class BrowserOnPool {
public:
    explicit BrowserOnPool(int articles = Articles)
        : pool(articles) {
        browser.setBackend(pool.database);
        browser.resize(1200, 800);
        browser.show();
        if (browser.Populate() == 0) qFatal("the catalogue cannot be read");
        QApplication::processEvents();
    }

    mkl::ListView& list() const { return *browser.ArticlePoolListView(); }
    /// Reads the pool with the progress display, sorted as shown, until it is painted.
    void read() {
        browser.RefreshPane(mkl::acbPaneArticlePool);
        QApplication::processEvents();
    }
    /// Without its rows; they go before a read is measured.
    void empty() {
        browser.setFilter(mkl::acbPaneArticlePool, QStringLiteral("False"));
        read();
        browser.setFilter(mkl::acbPaneArticlePool, {});
    }

    Pool pool;
    mkl::ArtCatBrowser browser;
};

} // namespace bench
