// The order of the articles within a category.
#include "BrowserCommand.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

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

/// Moves the row at one place of the list to where another one stands; a negative place counts from the end.
auto move(Long from, Long to) {
    return [from, to](CommandHost& host) {
        const Long count = host.list().ListItems().Count();
        const Long source = from < 0 ? count + 1 + from : from;
        const Long target = to < 0 ? count + 1 + to : to;
        host.hub().articleOrder->ReorderCategories(host.row(target)->Text().toInt(), host.row(source)->Text().toInt(),
                                                   host.assignmentAt(target), host.assignmentAt(source), 41);
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

BrowserCommand moving(const char* name, int articles, std::function<void(CommandHost&)> screen, Long from, Long to) {
    return {name,
            shopPicture(articles),
            std::move(screen),
            move(from, to),
            keptList,
            {{u"ReorderCategories"_s, rolledBack}}};
}

BrowserCommand sorting(const char* name, int articles, std::function<void(CommandHost&)> screen, bool descending) {
    return {name,
            shopPicture(articles),
            std::move(screen),
            sort(descending),
            readAnew,
            {{u"ReorderAlphabetical"_s, rolledBack}, {u"PopulateLV"_s, readFailed}}};
}

} // namespace

QList<BrowserCommand> orderCommands(int articles) {
    BrowserCommand sortNothing = {"sort an empty category",
                                  shopPicture(articles),
                                  [](CommandHost& host) { host.show(42); },
                                  sort(false),
                                  {},
                                  {{u"ReorderAlphabetical"_s, rolledBack}}};
    sortNothing.levelsLeftOpen = 1;
    sortNothing.changes = false;
    return {moving("move up", articles, show, -2, 2),
            moving("move down", articles, show, 1, -2),
            moving("move under a filter", articles, showFiltered, -1, 1),
            {"swap", shopPicture(articles), show, swapEnds, keptList, {{u"SwapCategories"_s, rolledBack}}},
            sorting("sort", articles, show, false),
            sorting("sort backwards", articles, show, true),
            sorting("sort under a filter", articles, showFiltered, false),
            sortNothing};
}

} // namespace mkl
