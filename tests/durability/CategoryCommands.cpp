// The order of the categories, new ones, and what is done to one with all below it.
#include "BrowserCommand.h"
#include "PartsOfWork.h"
#include "TreeCommand.h"
#include "browser/dialogs/frmNewCat.h"
#include "browser/dialogs/frmNewPosition.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long screws = 41, tools = 43, nails = 45, dowels = 47;
constexpr Long newKey = 53; // behind 43, on the replica of the digit 3

BrowserCommand moveToTheTop(int articles) {
    BrowserCommand command =
        numbering("move a category", u"kTV_NewPosition_Click"_s, articles, nails, ListShows::Nothing);
    command.run = [](CommandHost& host) {
        host.world().forms.answers = {[](QDialog& form) {
            auto& editor = static_cast<frmNewPosition&>(form);
            editor.UD.setValue(1);
            editor.chkCancel.setValue(0);
        }};
        host.hub().categoryOrder->kTV_NewPosition();
    };
    command.parts = [](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        parts.orderLevel({nails, screws, tools, 46, dowels});
        return parts.afterFailureOf(procedure);
    };
    return command;
}

BrowserCommand sortLevel(int articles) {
    BrowserCommand command{
        .name = "sort the categories", .picture = shopPicture(articles), .screen = selectCategory(nails)};
    command.run = [](CommandHost& host) {
        host.world().user.answers = {vbYes};
        host.hub().categoryOrder->kTV_SortInc();
    };
    command.done = {.stored = Stored::After, .list = ListShows::Reread};
    command.failures = readsBehind(false, ListShows::Nothing);
    command.failures[u"Renumber"_s] = {};
    return command;
}

BrowserCommand newCategory(const char* name, int articles, Long option, const CategoryState& made,
                           const QList<Long>& level) {
    BrowserCommand command = numbering(name, u"NewCategory"_s, articles, tools, ListShows::RereadOrNothing);
    command.run = [option](CommandHost& host) {
        host.world().forms.answers = {[option](QDialog& form) {
            auto& asked = static_cast<frmNewCat&>(form);
            asked.txtCatName.setText(u"Neu"_s);
            asked.Opt(option).setValue(true);
            if (asked.CheckRecord()) asked.txtResult.setText(QString::number(option));
        }};
        host.hub().categoryEditing->kTV_New();
    };
    command.failures[u"NewID"_s] = {};
    command.silentBefore = true; // whether the name is free
    command.parts = [made, level](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        parts.make(newKey, made);
        parts.orderLevel(level);
        return parts.afterFailureOf(procedure);
    };
    return command;
}

BrowserCommand rename(int articles) {
    BrowserCommand command{
        .name = "rename a category", .picture = shopPicture(articles), .screen = selectCategory(tools)};
    command.run = [](CommandHost& host) {
        host.world().user.texts = {u"Neuer Name"_s};
        host.hub().categoryEditing->kTV_Rename();
    };
    command.done = {.stored = Stored::After, .edited = true};
    command.failures[u"RenameCategory"_s] = {};
    return command;
}

BrowserCommand deleteTree(int articles) {
    BrowserCommand command = numbering("delete a category with all below", u"DeleteCategory"_s, articles, dowels,
                                       ListShows::RereadOrNothing);
    command.run = [](CommandHost& host) {
        host.world().user.answers = {vbYes};
        host.hub().categoryEditing->kTV_Delete();
    };
    command.parts = [](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        parts.drop({dowels, 48, 49, 51});
        parts.orderLevel({screws, tools, nails, 46});
        return parts.afterFailureOf(procedure);
    };
    return command;
}

// Each row is stored by itself.
BrowserCommand deactivateTree(int articles) {
    BrowserCommand command{.name = "deactivate a category with all below",
                           .picture = shopPicture(articles),
                           .screen = selectCategory(dowels)};
    command.run = [](CommandHost& host) {
        captionActivation(host.hub().ui.menus.Item(u"kTV_Activate"_s), true);
        host.world().user.answers = {vbYes};
        host.hub().categoryEditing->kTV_Activate();
    };
    command.done = {.stored = Stored::After, .edited = true};
    command.failures[u"TVActivate"_s] = {.stored = Stored::Part, .eachRow = true};
    command.failures[u"RefreshItem"_s] = {
        .stored = Stored::Part, .edited = true, .eachRow = true, .thenLost = u"(TVActivate )?"_s};
    command.oneTransaction = false;
    command.parts = [](const CatalogueRows& before, const QString&) {
        PartsOfWork parts(before);
        parts.activate({48, 49, 51, dowels}, false);
        return parts.afterFailureOf(u"TVActivate"_s);
    };
    return command;
}

} // namespace

QList<BrowserCommand> categoryCommands(int articles) {
    const CategoryState behind = {.name = u"Neu"_s, .order = 3, .changed = true};
    const CategoryState below = {.name = u"Neu"_s, .parent = tools, .order = 2, .changed = true};
    return {moveToTheTop(articles),
            sortLevel(articles),
            newCategory("new category", articles, 2, behind, {screws, tools, newKey, nails, 46, dowels}),
            newCategory("new subcategory", articles, 3, below, {44, newKey}),
            rename(articles),
            deleteTree(articles),
            deactivateTree(articles)};
}

} // namespace mkl
