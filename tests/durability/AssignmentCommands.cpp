// Articles that come into a category or leave it. Most procedures of these commands tell their caller nothing of a
// failure, so that a part of the work is stored.
#include "BrowserCommand.h"
#include "PartsOfWork.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "controls/ListView.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long screws = 41, tools = 43;

void fillIn(CommandHost& host, std::function<void(frmArticleNewPos&)> option) {
    host.world().forms.answers = {[option = std::move(option)](QDialog& form) {
        auto& asked = static_cast<frmArticleNewPos&>(form);
        option(asked);
        asked.chkCancel.setValue(0);
    }};
}

/// Adds the articles of the pool's selection to the selected category, at a position or, with 0, behind the last.
auto addFromPool(Long position) {
    return [position](CommandHost& host) {
        host.world().user.answers = {vbOK};
        fillIn(host, [position](frmArticleNewPos& form) {
            form.Opt(position == 0 ? 1 : 2).setValue(true);
            form.UD.setValue(position);
        });
        host.hub().dropActions->addPoolSelection();
    };
}

/// Moves the selected rows of the list to the first position of the other category.
void moveToTools(CommandHost& host) {
    fillIn(host, [](frmArticleNewPos& form) { form.Opt(0).setValue(true); });
    host.hub().dropActions->DragDrop_AddArticles(tools, u"Werkzeug"_s, acbPaneArticleList, screws, u"Schrauben"_s, 0);
}

void deleteSelected(CommandHost& host) {
    host.world().user.answers = {vbYes};
    host.hub().articleAssignment->kLV_DeletePosition();
}

Outcome part(ListShows list, const QString& thenGivenUp, const QString& thenLost) {
    return {.stored = Stored::Part, .edited = true, .list = list, .thenGivenUp = thenGivenUp, .thenLost = thenLost};
}

BrowserCommand adding(const char* name, int articles, Long position) {
    const QString end = u"Cat_AddArticles DragDrop_AddArticles "_s;
    const ListShows list = ListShows::Reread;
    BrowserCommand command{name,
                           shopPicture(articles),
                           [](CommandHost& host) {
                               host.show(tools);
                               host.selectPool({1, 2, 3, 4, 901}); // the category has 3 already
                           },
                           addFromPool(position),
                           {.stored = Stored::After, .edited = true, .list = list}};
    command.failures = {{u"DragDrop_AddArticles"_s, {}},
                        {u"ArticlePosDialog"_s, {}},
                        // Where it fails before the transaction, all that follows fails too.
                        {u"Article_IsInCat"_s, part(list, end, u"(Article_IsInCat )*ArticlePosDialog |"_s + end)},
                        {u"Cat_RenumberArticles"_s, part(list, end, u"Article_IsInCat "_s + end)},
                        {u"Cat_AddArticles"_s, part(list, u"DragDrop_AddArticles "_s, u"DragDrop_AddArticles "_s)},
                        {u"PopulateLV"_s,
                         {.stored = Stored::After,
                          .edited = true,
                          .list = ListShows::RereadOrNothing,
                          .behindCommit = true,
                          .thenLost = u"(PopulateLV )?"_s}}};
    command.parts = [position](const CatalogueRows& before, const QString& procedure) {
        const auto work = [&](Long gap) {
            PartsOfWork parts(before);
            const Long start = position == 0 ? parts.count(tools) + 1 : position;
            parts.openGap(tools, start, gap);
            parts.add(tools, start, {1, 2, 4, 901});
            return parts.afterFailureOf(procedure);
        };
        // An article that is taken for a new one makes the gap wider than what comes in.
        return procedure == u"Article_IsInCat"_s ? work(4) + work(5) : work(4);
    };
    return command;
}

BrowserCommand moving(const char* name, int articles, const QList<Long>& places) {
    const QString end = u"Cat_DeleteArticles DragDrop_AddArticles "_s;
    const ListShows list = ListShows::AsBefore; // a matter of the drop
    BrowserCommand command{name,
                           shopPicture(articles),
                           [places](CommandHost& host) {
                               host.show(screws);
                               host.selectRows(places);
                           },
                           moveToTools,
                           {.stored = Stored::After, .edited = true}};
    command.failures = {
        {u"DragDrop_AddArticles"_s, {}},
        {u"ArticlePosDialog"_s, {}},
        {u"Article_IsInCat"_s,
         part(list, u"Cat_AddArticles "_s + end, u"(Article_IsInCat )*ArticlePosDialog |Cat_AddArticles "_s + end)},
        {u"Cat_RenumberArticles"_s, part(list, u"Cat_AddArticles "_s + end + u"|DragDrop_AddArticles "_s,
                                         u"Article_IsInCat Cat_AddArticles "_s + end + u"|DragDrop_AddArticles "_s)},
        {u"Cat_AddArticles"_s, part(list, end, end)},
        {u"Cat_DeleteArticles"_s, part(list, u"DragDrop_AddArticles "_s, u"DragDrop_AddArticles "_s)}};
    command.parts = [places](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        const QList<Long> moved = parts.articlesAt(screws, places);
        parts.openGap(tools, 1, moved.size());
        parts.add(tools, 1, moved);
        parts.remove(screws, moved);
        return parts.afterFailureOf(procedure);
    };
    return command;
}

BrowserCommand deleting(const char* name, int articles, const QList<Long>& places) {
    const ListShows list = ListShows::Reread;
    BrowserCommand command{name,
                           shopPicture(articles),
                           [places](CommandHost& host) {
                               host.show(screws);
                               host.selectRows(places);
                           },
                           deleteSelected,
                           {.stored = Stored::After, .edited = true, .list = list}};
    Outcome unread = {.stored = Stored::After, .edited = true, .list = ListShows::Nothing, .behindCommit = true};
    // The row that is to be selected next is not there.
    if (places.size() == 1) unread.then = unread.thenGivenUp = unread.thenLost = u"DeletePosition "_s;
    command.failures = {{u"DeletePosition"_s, {}},
                        {u"Cat_DeleteArticles"_s, part(list, u"DeletePosition "_s, u"DeletePosition "_s)},
                        {u"Cat_RenumberArticles"_s, part(list, u"DeletePosition "_s, u"DeletePosition "_s)},
                        {u"PopulateLV"_s, unread}};
    command.parts = [places](const CatalogueRows& before, const QString& procedure) {
        PartsOfWork parts(before);
        parts.remove(screws, parts.articlesAt(screws, places));
        return parts.afterFailureOf(procedure);
    };
    return command;
}

} // namespace

QList<BrowserCommand> assignmentCommands(int articles) {
    return {adding("add at a position", articles, 2),        adding("add behind the last", articles, 0),
            moving("move one to a category", articles, {1}), moving("move some to a category", articles, {1, 2}),
            deleting("delete one", articles, {2}),           deleting("delete some", articles, {1, 3})};
}

} // namespace mkl
