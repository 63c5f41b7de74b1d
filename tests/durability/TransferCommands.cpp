// Categories that are dropped on others: swapped, moved and copied with all below them.
#include "BrowserCommand.h"
#include "PartsOfWork.h"
#include "TreeCommand.h"
#include "browser/dialogs/frmArtCatBrowserOrder.h"
#include "controls/TreeView.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long screws = 41, tools = 43, pliers = 44, nails = 45, awls = 46, dowels = 47, stone = 49;

/// Drops the selected category on the target.
void drop(CommandHost& host, Long target, Long copies) {
    DragState& drag = host.hub().state.drag;
    drag.DragFromTree = true;
    drag.DragCopy = copies;
    drag.DragNode = host.tree().SelectedItem();
    host.tree().setDropHighlight(host.tree().Nodes().Item(u"A-%1"_s.arg(target)));
    host.hub().dropActions->DropOn(acbPaneCategoryTree);
}

auto dropWithChoice(Long target, Long choice) {
    return [target, choice](CommandHost& host) {
        host.world().forms.answers = {[choice](QDialog& form) {
            static_cast<frmArtCatBrowserOrder&>(form).txtResult.setText(QString::number(choice));
        }};
        drop(host, target, 0);
    };
}

BrowserCommand swapping(const char* name, int articles, Long category, Long target) {
    BrowserCommand command{.name = name, .picture = shopPicture(articles), .screen = selectCategory(category)};
    command.run = dropWithChoice(target, 1);
    command.done = {.stored = Stored::After, .edited = true, .list = ListShows::Reread};
    command.failures = readsBehind(true, ListShows::Nothing);
    command.failures[u"TVDragCategory"_s] = rereadTree;
    command.failures[u"SwapCategories"_s] = {};
    command.readsTreeAfterFailure = true;
    return command;
}

/// A move, of which each numbered level and the new parent may be lacking.
BrowserCommand moving(const char* name, int articles, Long category, Long target, Long choice) {
    BrowserCommand command = numbering(name, u"TVDragCategory"_s, articles, category, ListShows::Nothing);
    command.run = dropWithChoice(target, choice);
    Outcome& level = command.failures[u"OrderCategory"_s];
    level.thenGivenUp = u"(OrderCategory )?(EditParent )?TVDragCategory "_s;
    level.thenLost = level.thenGivenUp + u"X_PopulateTV "_s;
    command.failures[u"EditParent"_s] = level;
    return command;
}

BrowserCommand moveWithinLevel(int articles) {
    BrowserCommand command = moving("drop a category on its level", articles, screws, nails, 2);
    command.parts = [](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        parts.orderLevel({tools, nails, screws, awls, dowels});
        return parts.afterFailureOf(procedure);
    };
    return command;
}

BrowserCommand moveToLevel(int articles) {
    BrowserCommand command = moving("drop a category before one of another level", articles, stone, nails, 2);
    command.parts = [](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        parts.orderLevel({48});
        parts.orderLevel({screws, tools, stone, nails, awls, dowels});
        parts.setParent(stone, 0);
        return parts.afterFailureOf(procedure);
    };
    return command;
}

BrowserCommand makeSubcategory(int articles) {
    BrowserCommand command = moving("drop a category into another one", articles, nails, tools, 3);
    command.parts = [](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        parts.orderLevel({screws, tools, awls, dowels});
        parts.orderLevel({pliers, nails});
        parts.setParent(nails, tools);
        return parts.afterFailureOf(procedure);
    };
    return command;
}

/// What a copy stores of which one step has failed: the rest of that level is lacking, what called it goes on.
class FailingCopy {
public:
    FailingCopy(const CatalogueRows& before, int failing, bool keyIsUsed)
        : rows(before)
        , failing_(failing)
        , keyIsUsed_(keyIsUsed)
        , nextAssignment_(before.assignments.rbegin()->first + 1) {}

    void copy(Long category, Long parent, Long order) {
        const Long key = nextKey();
        store(category, key, parent, order);
        assign(category, key);
        copyChildren(category, key);
    }

    CatalogueRows rows;
    int steps = 0;

private:
    void copyChildren(Long category, Long parent) {
        QList<std::pair<Long, Long>> children; // by their positions
        for (const auto& [key, row] : std::as_const(rows.categories))
            if (row.parent == category) children.append({row.order, key});
        std::ranges::sort(children);
        if (isFailing()) return;
        for (const auto& [order, child] : std::as_const(children)) {
            const bool fails = isFailing();
            const Long key = fails && !keyIsUsed_ ? 0 : nextKey();
            if (fails) return;
            store(child, key, parent, order);
            if (isFailing()) return;
            assign(child, key);
            copyChildren(child, key);
        }
    }
    bool isFailing() { return ++steps == failing_; }
    Long nextKey() { return (++counter_) * 10 + 3; }
    void store(Long source, Long key, Long parent, Long order) {
        rows.categories[key] = {rows.categories.at(source).name, parent, order, true, true};
    }
    void assign(Long source, Long key) {
        const auto before = rows.assignments;
        for (const auto& [id, row] : before)
            if (row.category == source) rows.assignments[nextAssignment_++] = {row.article, key, row.order, true};
    }

    int failing_;
    bool keyIsUsed_;
    Long counter_ = 4; // 43 is there
    Long nextAssignment_;
};

BrowserCommand copyTree(int articles) {
    BrowserCommand command{
        .name = "copy a category with all below", .picture = shopPicture(articles), .screen = selectCategory(dowels)};
    command.run = [](CommandHost& host) {
        host.world().user.answers = {vbYes};
        drop(host, tools, 1);
    };
    command.done = {.stored = Stored::After, .list = ListShows::Reread};
    command.failures = readsBehind(false, ListShows::RereadOrNothing);
    const QString end = u"TVDragCategory_Copy "_s;
    command.failures[u"TVDragCategory_Copy"_s] = {};
    command.failures[u"NewID"_s] = {.then = end, .thenGivenUp = end, .thenLost = end};
    command.failures[u"TVDragCategory_CopySub"_s] = {.stored = Stored::Part,
                                                     .list = ListShows::Reread,
                                                     .thenGivenUp = u"(TVDragCategory_CopySub )*"_s + end,
                                                     .thenLost = u"(TVDragCategory_CopySub )*"_s + end};
    command.parts = [](const CatalogueRows& before, const QString&) {
        QList<CatalogueRows> states;
        const auto run = [&](int failing, bool keyIsUsed) {
            FailingCopy copy(before, failing, keyIsUsed);
            copy.copy(dowels, tools, 2);
            states.append(copy.rows);
            return copy.steps;
        };
        const int steps = run(0, false);
        for (int failing = 1; failing <= steps; ++failing) {
            run(failing, false);
            run(failing, true);
        }
        return states;
    };
    return command;
}

} // namespace

QList<BrowserCommand> transferCommands(int articles) {
    return {swapping("swap categories of a level", articles, screws, dowels),
            swapping("swap categories of two levels", articles, stone, awls),
            moveWithinLevel(articles),
            moveToLevel(articles),
            makeSubcategory(articles),
            copyTree(articles)};
}

} // namespace mkl
