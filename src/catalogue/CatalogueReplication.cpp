#include "catalogue/CatalogueReplication.h"

#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueSchema.h"
#include "catalogue/Refusal.h"
#include "catalogue/ReplicationSql.h"

#include <QSet>
#include <algorithm>
#include <limits>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long step = 10;

void requireServer(const dao::Database& database) {
    if (!dao::DBEngine::isServer(database.Name()))
        refuse(refusal::NotOffered, TextId::ReplicationNeedsServer, {database.Name()});
}

void requireSettings(const ReplicationSql& sql) {
    const QStringList missing = sql.missingSettings();
    if (!missing.isEmpty()) refuse(refusal::Internal, TextId::ReplicationSettings, {missing.join(u"; "_s)});
}

/// What must be known of a peer.
struct Peer {
    QString address;
    Long digit = 0;
    bool isPrepared = false;
    bool isEmpty = false;
    bool takesFromUs = false;
};

Peer askPeer(const QString& address, const QString& ownNode, const ReplicationOptions& options) {
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> database =
        openCatalogue(*workspace, address, options.access ? options.access(address) : dao::OpenOptions());
    requireServer(*database);
    const ReplicationSql sql(*database);
    return {address, replicaDigit(*database), !sql.ownNode().isEmpty(), CatalogueSchema::isEmpty(*database),
            sql.subscribedNodes().contains(ownNode)};
}

void requireFreeDigit(const ReplicationSql& sql, Long digit, const QList<Peer>& peers) {
    const QString text = QString::number(digit), node = ReplicationSql::nodeName(digit), own = sql.ownNode();
    if (digit < 0 || digit > 9) refuse(err::InvalidArgument, TextId::CatalogueNoDigit, {text});
    if (!own.isEmpty() && own != node) refuse(err::InvalidArgument, TextId::ReplicationOtherNode, {own});
    const bool isTaken = sql.subscribedNodes().contains(node) || std::ranges::count(peers, digit, &Peer::digit) > 0;
    if (isTaken) refuse(err::InvalidArgument, TextId::ReplicationDigitTaken, {text});
    for (const Peer& peer : peers)
        if (!peer.isPrepared) refuse(refusal::Missing, TextId::ReplicationPeerNotPrepared, {peer.address});
}

void setCounters(const ReplicationSql& sql, Long digit) {
    for (const ReplicationSql::Counter& counter : sql.counters()) {
        const qint64 next = nextReplicaKey(counter.highest, digit);
        if (next > std::numeric_limits<Long>::max()) throwError(err::Overflow);
        // A counter in use may be ahead of the rows, since numbers of rows that were deleted are not given again.
        if (counter.step != step || counter.next % step != digit || counter.next < next)
            sql.setCounter(counter, step, next);
    }
}

/// Subscribes to the peer; true if its rows come along.
bool subscribe(const ReplicationSql& sql, dao::Database& database, const Peer& peer, Long digit,
               const ReplicationOptions& options) {
    if (sql.subscribedNodes().contains(ReplicationSql::nodeName(peer.digit))) return false;
    const bool isEmpty = CatalogueSchema::isEmpty(database);
    const bool isKnown = options.sameRows || peer.takesFromUs || peer.isEmpty || !sql.subscribedNodes().isEmpty();
    if (!isEmpty && !isKnown) refuse(refusal::Exists, TextId::ReplicationBothFilled, {peer.address});
    const bool takesRows = isEmpty && !peer.isEmpty && !options.sameRows;
    sql.subscribe(digit, peer.digit, peer.address, takesRows);
    return takesRows;
}

} // namespace

qint64 nextReplicaKey(std::optional<qint64> highest, Long digit) {
    const qint64 least = std::max<qint64>(step, highest.value_or(0) + 1);
    return least + (digit - least % step + step) % step;
}

void prepareReplication(dao::Database& database, const ReplicationOptions& options) {
    requireServer(database);
    const ReplicationSql sql(database);
    requireSettings(sql);
    sql.makeExtension();
    QList<Peer> peers;
    for (const QString& address : options.peers)
        peers.append(askPeer(address, ReplicationSql::nodeName(options.digit), options));
    requireFreeDigit(sql, options.digit, peers);

    setReplicaDigit(database, options.digit);
    if (sql.ownNode().isEmpty()) sql.makeNode(options.digit, options.address);
    sql.giveTablesAway();
    for (const Peer& peer : std::as_const(peers))
        if (subscribe(sql, database, peer, options.digit, options))
            sql.waitForRows(ReplicationSql::subscriptionName(options.digit, peer.digit));
    setCounters(sql, options.digit);
}

// Who may not set the digit is told so before a counter has moved.
void giveReplicaDigit(dao::Database& database, Long digit) {
    if (!dao::DBEngine::isServer(database.Name())) return setReplicaDigit(database, digit);
    const ReplicationSql sql(database);
    const QString node = sql.ownNode();
    if (!node.isEmpty()) refuse(refusal::NotOffered, TextId::ReplicationDigitByInit, {node});
    setReplicaDigit(database, digit);
    setCounters(sql, digit);
}

ReplicationStatus replicationStatus(dao::Database& database) {
    requireServer(database);
    const ReplicationSql sql(database);
    ReplicationStatus status;
    status.digit = replicaDigit(database);
    status.missingSettings = sql.missingSettings();
    status.nextAssignment = sql.nextAssignment();
    status.nextCategory = nextReplicaKey(sql.highestCategory(status.digit), status.digit);
    if (!sql.hasExtension()) return status;
    status.conflicts = sql.conflictPolicy();
    status.node = sql.ownNode();
    if (status.node.isEmpty()) return status; // from a backup: the extension without what it was told
    status.subscriptions = sql.subscriptions();
    status.consumers = sql.consumers();
    status.secondsAhead = sql.secondsAhead();
    return status;
}

bool ReplicationStatus::isWorking() const {
    const auto replicates = [](const ReplicaSubscription& subscription) {
        return subscription.state == u"replicating";
    };
    return !node.isEmpty() && missingSettings.isEmpty() && secondsAhead == 0 &&
           std::ranges::all_of(subscriptions, replicates) && std::ranges::all_of(consumers, &ReplicaConsumer::active);
}

} // namespace mkl
