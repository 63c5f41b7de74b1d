// Articles that become active or inactive, in either pane.
#include "BrowserCommand.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

BrowserCommand activating(const char* name, int articles, acbPanes pane) {
    const Outcome done = {.stored = Stored::After, .edited = true};
    const Outcome rowNotShown = {.stored = Stored::After, .edited = true, .behindCommit = true};
    return {name,
            shopPicture(articles),
            [](CommandHost& host) { host.show(41); },
            [pane](CommandHost& host) { host.hub().articleActivation->LVActivate(3, pane, false); },
            done,
            {{u"LVActivate"_s, {}}, {u"RefreshItem"_s, rowNotShown}}};
}

} // namespace

QList<BrowserCommand> activationCommands(int articles) {
    return {activating("deactivate in the list", articles, acbPaneArticleList),
            activating("deactivate in the pool", articles, acbPaneArticlePool)};
}

} // namespace mkl
