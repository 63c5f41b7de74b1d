#include "TreeCommand.h"

#include "support/FixedReplica.h"

namespace mkl {

using namespace Qt::StringLiterals;

const Outcome rereadTree = {.list = ListShows::Reread, .thenLost = u"X_PopulateTV "_s};

std::function<void(CommandHost&)> selectCategory(Long category) {
    return [category](CommandHost& host) {
        host.browser().setHelper(makeRef<FixedReplica>(3));
        host.browser().setCurrentSenderID(1);
        host.show(category);
    };
}

QMap<QString, Outcome> readsBehind(bool edited, ListShows list) {
    const Outcome tree = {.stored = Stored::After,
                          .edited = edited,
                          .list = ListShows::Anything,
                          .behindCommit = true,
                          .treeIsTrue = false,
                          .thenLost = u"(PopulateLV )*"_s};
    const Outcome articles = {
        .stored = Stored::After, .edited = edited, .list = list, .behindCommit = true, .thenLost = u"(PopulateLV )?"_s};
    return {{u"X_PopulateTV"_s, tree}, {u"ReportTreeError"_s, tree}, {u"PopulateLV"_s, articles}};
}

BrowserCommand numbering(const char* name, const QString& procedure, int articles, Long selected, ListShows list) {
    BrowserCommand command{.name = name, .picture = shopPicture(articles), .screen = selectCategory(selected)};
    command.done = {.stored = Stored::After, .edited = true, .list = ListShows::Reread};
    command.failures = readsBehind(true, list);
    command.failures[procedure] = rereadTree;
    command.failures[u"OrderCategory"_s] = {.stored = Stored::Part,
                                            .edited = true,
                                            .list = ListShows::Reread,
                                            .thenGivenUp = procedure + u' ',
                                            .thenLost = procedure + u" X_PopulateTV "_s};
    command.readsTreeAfterFailure = true;
    return command;
}

} // namespace mkl
