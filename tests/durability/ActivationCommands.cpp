// Articles that become active or inactive, in either pane.
#include "BrowserCommand.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

BrowserCommand activating(const char* name, acbPanes pane) {
    const Outcome done = {.stored = Stored::After, .edited = true};
    const Outcome rowNotShown = {.stored = Stored::After, .edited = true, .behindCommit = true};
    return {name,
            shopPicture(14),
            [](CommandHost& host) { host.show(41); },
            [pane](CommandHost& host) { host.hub().articleActivation->LVActivate(5, pane, false); },
            done,
            {{u"LVActivate"_s, {}}, {u"RefreshItem"_s, rowNotShown}}};
}

} // namespace

QList<BrowserCommand> activationCommands() {
    return {activating("deactivate in the list", acbPaneArticleList),
            activating("deactivate in the pool", acbPaneArticlePool)};
}

} // namespace mkl
