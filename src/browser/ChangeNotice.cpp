#include "browser/ChangeNotice.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "controls/Extender.h"

#include <QApplication>

namespace mkl {

namespace {
constexpr Long interval = 1000; // ms
}

void ChangeNotice::LetChangeNotice(bool changeNotice) {
    hub_.state.changeNotice = changeNotice;
    hub_.ui.NoticeTimer->setInterval(interval);
    hub_.ui.NoticeTimer->setEnabled(changeNotice);
    show();
}

void ChangeNotice::NoticeTimer_Timer() {
    if (!hub_.face.UserMode() || isBusy()) return;
    look();
    show();
}

// A form, a menu or a drag that the user is at, a read, a transaction: nothing may come between.
bool ChangeNotice::isBusy() const {
    const BrowserState& state = hub_.state;
    const bool isPopulated = !state.ArticleNumberPattern.isEmpty();
    if (!state.Backend || !isPopulated || !hub_.ui.PB->isHidden()) return true;
    const QWidget* const form = QApplication::activeModalWidget();
    if ((form && form != hub_.face.window()) || QApplication::activePopupWidget()) return true;
    if (QApplication::mouseButtons() != Qt::NoButton || QWidget::mouseGrabber()) return true;
    return state.Workspace && state.Workspace->transactionDepth() > 0;
}

// Who has lost the server has not heard what others did meanwhile.
void ChangeNotice::look() {
    BrowserState& state = hub_.state;
    const bool hasChanged = state.Backend->takeChangedByOthers(); // which may find out that the server has gone
    state.isLost = state.Backend->isLost();
    if (hasChanged || state.isLost) state.isOutdated.fill(true);
}

void ChangeNotice::readBegins(acbPanes pane) {
    if (!hub_.state.changeNotice || !hub_.state.Backend) return;
    look();
    hub_.state.isOutdated[pane] = false;
    show();
}

bool ChangeNotice::isOutdated() const {
    const BrowserState& state = hub_.state;
    return state.isOutdated[acbPaneCategoryTree] || (state.ShowArticlePool && state.isOutdated[acbPaneArticlePool]) ||
           (state.ShowArticleList && state.isOutdated[acbPaneArticleList]);
}

void ChangeNotice::show() {
    const BrowserState& state = hub_.state;
    NoticeBar& bar = *hub_.ui.Notice;
    const bool isWanted = state.changeNotice && hub_.ui.PB->isHidden() && (state.isLost || isOutdated());
    if (isWanted && state.isLost)
        bar.setNotice(text(TextId::BrowserServerLost), text(TextId::BrowserReconnect));
    else if (isWanted)
        bar.setNotice(text(TextId::BrowserDataChanged), text(TextId::BrowserReadAgain));
    if (isWanted) place();
    bar.setVisible(isWanted);
    hub_.ui.SB->setRoomAtEnd(isWanted ? Width(bar) : 0);
}

void ChangeNotice::place() {
    NoticeBar& bar = *hub_.ui.Notice;
    const StatusBar& statusBar = *hub_.ui.SB;
    bar.resize(std::min(bar.sizeHint().width(), hub_.face.width()), statusBar.height());
    bar.move(hub_.face.width() - bar.width(), hub_.face.height() - bar.height());
    bar.raise();
}

void ChangeNotice::refresh() {
    if (isBusy()) return;
    hub_.ui.Notice->setVisible(false); // gives the focus back to the pane that had it
    hub_.population->Populate();
    if (hub_.state.closed) return;
    look();
    show();
}

} // namespace mkl
