// replica: the digit that the keys given out in this copy of the catalogue end in.
#include "apps/mklart/CatalogueReader.h"
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "catalogue/CatalogueReplica.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

void printStatus(const Invocation& call, const dao::Database& database) {
    const Long digit = replicaDigit(database);
    if (!call.has(u"json"_s)) return printLine(text(TextId::ToolInfoReplicaDigit, {QString::number(digit)}));
    const QJsonObject status{
        {u"file"_s, database.Name()}, {u"updatable"_s, database.Updatable()}, {u"replicaDigit"_s, digit}};
    printLine(QString::fromUtf8(QJsonDocument(status).toJson(QJsonDocument::Compact)));
}

int showStatus(const Invocation& call) {
    if (!call.argument(2).isEmpty()) call.refuse(text(TextId::ToolArgumentSurplus, {call.argument(2)}));
    printStatus(call, CatalogueReader(call.argument(1)).database());
    return Success;
}

Long wantedDigit(const Invocation& call) {
    const QString given = call.argument(2);
    if (given.isNull()) call.refuse(text(TextId::ToolArgumentMissing, {u"DIGIT"_s}));
    const bool isDigit = given.size() == 1 && given.front() >= u'0' && given.front() <= u'9';
    if (!isDigit) call.refuse(text(TextId::CatalogueNoDigit, {u'\'' + given + u'\''}));
    return given.toInt();
}

int setDigit(const Invocation& call) {
    const Long digit = wantedDigit(call);
    CatalogueReader catalogue(call.argument(1));
    setReplicaDigit(catalogue.database(), digit);
    printStatus(call, catalogue.database());
    return Success;
}

} // namespace

int runReplica(const Invocation& call) {
    const QString action = call.argument(0);
    if (action == u"status") return showStatus(call);
    if (action == u"digit") return setDigit(call);
    call.refuse(text(TextId::ToolBadAction, {action}));
}

} // namespace mkl
