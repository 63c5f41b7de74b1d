#include "apps/artikelkatalog/BrowserView.h"

#include "browser/ArtCatBrowser.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

const QString switches = u"View/"_s;

// The list takes what the others leave.
constexpr acbPanes measuredPanes[] = {acbPaneArticlePool, acbPaneCategoryTree};

QString widthKey(acbPanes pane) {
    return u"View/PaneWidth%1"_s.arg(pane);
}

bool isShown(const ArtCatBrowser& browser, acbPanes pane) {
    return pane != acbPaneArticlePool || browser.ShowArticlePool();
}

} // namespace

BrowserView::BrowserView(QSettings& settings)
    : settings_(settings) {}

bool BrowserView::isOn(const QString& entry, bool otherwise) const {
    return settings_.value(switches + entry, otherwise).toBool();
}

void BrowserView::setOn(const QString& entry, bool on) {
    settings_.setValue(switches + entry, on);
}

// Without the list the tree has its place too, which says nothing of the share that the user gave it.
void BrowserView::keepWidths(const ArtCatBrowser& browser) {
    if (!browser.ShowArticleList()) return;
    for (const acbPanes pane : measuredPanes)
        if (isShown(browser, pane)) settings_.setValue(widthKey(pane), browser.PaneWidth(pane));
}

void BrowserView::applyWidths(ArtCatBrowser& browser) const {
    bool any = false;
    for (const acbPanes pane : measuredPanes) {
        bool isNumber = false;
        const double share = settings_.value(widthKey(pane)).toDouble(&isNumber);
        if (!isNumber || !(share > 0 && share < 100) || !isShown(browser, pane)) continue;
        browser.setPaneWidth(pane, share);
        any = true;
    }
    if (any) browser.PaneResize();
}

} // namespace mkl
