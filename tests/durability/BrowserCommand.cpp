#include "BrowserCommand.h"

namespace mkl {

using namespace Qt::StringLiterals;

QString shopPicture(int articles) {
    QStringList inOrder;
    QStringList some;
    for (int i = 1; i <= articles; ++i) {
        // Their places by name are spread over all places, some names occur twice.
        const QString article = u"%1 Artikel %2"_s.arg(i).arg(QChar(u'A' + i * 7 % articles % 11));
        inOrder.append(article);
        if (i % 3 == 0) some.append(article);
    }
    return u"41 Schrauben: %1\n    42 Holzschrauben\n43 Werkzeug: %2\n    44 Zangen: 901 Kneifzange, 902 Rohrzange\n"
           "45 Nägel\n46 Ahlen: 902 Rohrzange\n47 Dübel: 1 Artikel H\n    48 Holz\n    49 Stein: 901 Kneifzange\n"
           "        51 Beton\n"_s.arg(inOrder.join(u", "_s), some.join(u", "_s));
}

QList<BrowserCommand> browserCommands(int articles) {
    return assignmentCommands(articles) + orderCommands(articles) + activationCommands(articles) +
           categoryCommands(articles) + transferCommands(articles);
}

Outcome BrowserCommand::undone(bool lost) const {
    if (!readsTreeAfterFailure) return {};
    return lost ? Outcome{.list = ListShows::Anything, .treeIsTrue = false} : Outcome{.list = ListShows::Reread};
}

void PrintTo(const BrowserCommand& command, std::ostream* out) {
    *out << command.name;
}

} // namespace mkl
