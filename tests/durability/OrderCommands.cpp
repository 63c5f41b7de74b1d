// The order of the articles within a category.
#include "BrowserCommand.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr int articles = 40;

const Outcome rolledBack = {};
const Outcome keptList = {.stored = Stored::After, .edited = true};
const Outcome readAnew = {.stored = Stored::After, .edited = true, .list = ListShows::Reread};
const Outcome readFailed = {.stored = Stored::After, .edited = true, .list = ListShows::Nothing, .behindCommit = true};

void show(CommandHost& host) {
    host.show(41);
}

void showFiltered(CommandHost& host) {
    host.browser().setFilter(acbPaneArticleList, u"[Order] Mod 3<>0"_s);
    host.show(41);
}

/// Moves the row at one place of the list to where another one stands.
auto move(Long from, Long to) {
    return [from, to](CommandHost& host) {
        const Long current = host.row(from)->Text().toInt();
        const Long wanted = host.row(to)->Text().toInt();
        host.hub().articleOrder->ReorderCategories(wanted, current, host.assignmentAt(to), host.assignmentAt(from), 41);
    };
}

void swapEnds(CommandHost& host) {
    const Long last = host.list().ListItems().Count();
    host.hub().articleOrder->LV_SwapPositions(host.assignmentAt(1), host.row(last)->Text().toInt(),
                                              host.assignmentAt(last), host.row(1)->Text().toInt());
}

auto sort(bool descending) {
    return [descending](CommandHost& host) {
        host.world().user.answers = {vbYes};
        host.hub().articleOrder->ReorderAlphabetical(host.hub().state.SelectedCategory, u"Schrauben"_s, descending);
    };
}

BrowserCommand moving(const char* name, std::function<void(CommandHost&)> screen, Long from, Long to) {
    return {name,
            shopPicture(articles),
            std::move(screen),
            move(from, to),
            keptList,
            {{u"ReorderCategories"_s, rolledBack}}};
}

BrowserCommand sorting(const char* name, std::function<void(CommandHost&)> screen, bool descending) {
    return {name,
            shopPicture(articles),
            std::move(screen),
            sort(descending),
            readAnew,
            {{u"ReorderAlphabetical"_s, rolledBack}, {u"PopulateLV"_s, readFailed}}};
}

} // namespace

QList<BrowserCommand> orderCommands() {
    BrowserCommand sortNothing = {"sort an empty category",
                                  shopPicture(articles),
                                  [](CommandHost& host) { host.show(42); },
                                  sort(false),
                                  {},
                                  {{u"ReorderAlphabetical"_s, rolledBack}}};
    sortNothing.levelsLeftOpen = 1;
    sortNothing.changes = false;
    return {moving("move up", show, 12, 3),
            moving("move down", show, 2, 13),
            moving("move under a filter", showFiltered, 8, 2),
            {"swap", shopPicture(articles), show, swapEnds, keptList, {{u"SwapCategories"_s, rolledBack}}},
            sorting("sort", show, false),
            sorting("sort backwards", show, true),
            sorting("sort under a filter", showFiltered, false),
            sortNothing};
}

} // namespace mkl
