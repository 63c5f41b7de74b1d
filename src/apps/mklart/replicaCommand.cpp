// replica: the digit that the keys given out in this copy of the catalogue end in, and copies on several servers.
#include "apps/mklart/CatalogueReader.h"
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "apps/mklart/ServerAccess.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueReplication.h"

#include <QJsonArray>
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

QString asJson(const ReplicationStatus& status) {
    QJsonArray subscriptions, consumers;
    for (const auto& [name, provider, state] : status.subscriptions)
        subscriptions.append(QJsonObject{{u"name"_s, name}, {u"provider"_s, provider}, {u"state"_s, state}});
    for (const auto& [slot, active, bytesBehind] : status.consumers)
        consumers.append(QJsonObject{{u"slot"_s, slot}, {u"active"_s, active}, {u"bytesBehind"_s, bytesBehind}});
    const QJsonObject object{{u"node"_s, status.node},
                             {u"replicaDigit"_s, status.digit},
                             {u"working"_s, status.isWorking()},
                             {u"conflicts"_s, status.conflicts},
                             {u"nextAssignment"_s, status.nextAssignment},
                             {u"nextCategory"_s, status.nextCategory},
                             {u"subscriptions"_s, subscriptions},
                             {u"consumers"_s, consumers},
                             {u"secondsAhead"_s, status.secondsAhead},
                             {u"missingSettings"_s, QJsonArray::fromStringList(status.missingSettings)}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void printText(const ReplicationStatus& status) {
    const QString none = text(TextId::ToolNull);
    printLine(text(TextId::ToolReplicaNode, {status.node.isEmpty() ? none : status.node}));
    printLine(text(TextId::ToolInfoReplicaDigit, {QString::number(status.digit)}));
    printLine(
        text(TextId::ToolReplicaNext, {QString::number(status.nextAssignment), QString::number(status.nextCategory)}));
    printLine(text(TextId::ToolReplicaConflicts, {status.conflicts.isEmpty() ? none : status.conflicts}));
    for (const auto& [name, provider, state] : status.subscriptions)
        printLine(text(TextId::ToolReplicaSubscription, {name, provider, state}));
    for (const auto& [slot, active, bytesBehind] : status.consumers)
        printLine(
            text(TextId::ToolReplicaConsumer,
                 {slot, text(active ? TextId::ToolReplicaUp : TextId::ToolReplicaDown), QString::number(bytesBehind)}));
    for (const QString& setting : status.missingSettings)
        printLine(text(TextId::ToolReplicaSetting, {setting}));
    if (status.secondsAhead > 0) printLine(text(TextId::ToolReplicaClock, {QString::number(status.secondsAhead)}));
}

/// Of a catalogue that works together with others; one that does not is in order as it is.
int printReplication(const Invocation& call, dao::Database& database) {
    const ReplicationStatus status = replicationStatus(database);
    if (call.has(u"json"_s))
        printLine(asJson(status));
    else
        printText(status);
    return status.node.isEmpty() || status.isWorking() ? Success : Failure;
}

void refuseSurplus(const Invocation& call) {
    if (!call.argument(2).isEmpty()) call.refuse(text(TextId::ToolArgumentSurplus, {call.argument(2)}));
}

int showStatus(const Invocation& call) {
    refuseSurplus(call);
    CatalogueReader catalogue(call.argument(1));
    if (dao::DBEngine::isServer(call.argument(1))) return printReplication(call, catalogue.database());
    printStatus(call, catalogue.database());
    return Success;
}

int prepare(const Invocation& call) {
    refuseSurplus(call);
    if (!call.has(u"digit"_s)) call.refuse(text(TextId::ToolReplicaBadDigit));
    const QString own = call.argument(1);
    const ReplicationOptions options{call.number(u"digit"_s, 0, 0, 9),
                                     call.has(u"address"_s) ? call.value(u"address"_s) : own, call.values(u"peer"_s),
                                     call.has(u"same-rows"_s), [](const QString& peer) { return accessTo(peer); }};
    CatalogueReader catalogue(own);
    prepareReplication(catalogue.database(), options);
    printReplication(call, catalogue.database());
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
    giveReplicaDigit(catalogue.database(), digit);
    printStatus(call, catalogue.database());
    return Success;
}

} // namespace

int runReplica(const Invocation& call) {
    const QString action = call.argument(0);
    if (action == u"status") return showStatus(call);
    if (action == u"digit") return setDigit(call);
    if (action == u"init") return prepare(call);
    call.refuse(text(TextId::ToolBadAction, {action}));
}

} // namespace mkl
