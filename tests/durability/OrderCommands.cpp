// The order of the articles within a category.
#include "BrowserCommand.h"
#include "browser/dialogs/frmNewPosition.h"
#include "controls/ListView.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

const Outcome rolledBack = {};
const Outcome readAnew = {.stored = Stored::After, .edited = true, .list = ListShows::Reread};
const Outcome kept = {.stored = Stored::After, .edited = true};
const Outcome readFailed = {.stored = Stored::After, .edited = true, .list = ListShows::Nothing, .behindCommit = true};

// The row that is to be selected again is not there.
Outcome withoutTheRow() {
    Outcome outcome = readFailed;
    outcome.then = outcome.thenGivenUp = outcome.thenLost = u"kLV_NewPosition_Click "_s;
    return outcome;
}

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
        const auto place = [count = host.list().ListItems().Count()](Long n) { return n < 0 ? count + 1 + n : n; };
        const Long wanted = host.row(place(to))->Text().toInt();
        host.selectRows({place(from)});
        host.world().forms.answers = {[wanted](QDialog& form) {
            auto& editor = static_cast<frmNewPosition&>(form);
            editor.UD.setMaximum(std::max(editor.UD.Maximum(), wanted)); // under a filter positions go beyond the count
            editor.UD.setValue(wanted);
            editor.chkCancel.setValue(0);
        }};
        host.hub().articleOrder->kLV_NewPosition();
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
        ArticleOrder& order = *host.hub().articleOrder;
        descending ? order.kLV_SortDesc() : order.kLV_SortInc();
    };
}

BrowserCommand moving(const char* name, int articles, std::function<void(CommandHost&)> screen, Long from, Long to) {
    return {name,
            shopPicture(articles),
            std::move(screen),
            move(from, to),
            readAnew,
            {{u"ReorderCategories"_s, rolledBack}, {u"PopulateLV"_s, withoutTheRow()}}};
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
            {"swap", shopPicture(articles), show, swapEnds, kept, {{u"SwapCategories"_s, rolledBack}}},
            sorting("sort", articles, show, false),
            sorting("sort backwards", articles, show, true),
            sorting("sort under a filter", articles, showFiltered, false),
            sortNothing};
}

} // namespace mkl
