#pragma once
// Catalogues on servers that exchange their rows in both directions, one at each site.
#include "dao/Workspace.h"

#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace mkl {

/// What a site takes from another one.
struct ReplicaSubscription {
    QString name;
    QString provider; ///< node at the other end
    QString state;    ///< as the engine names it: "replicating", "down", "initializing", "disabled"
};

/// Another site that takes from this one.
struct ReplicaConsumer {
    QString slot;
    bool active = false;
    qint64 bytesBehind = 0; ///< of the log that it has not confirmed yet
};

struct ReplicationStatus {
    QString node; ///< empty where the catalogue is not prepared
    Long digit = 0;
    QString conflicts; ///< which change of a row wins; empty without the extension
    qint64 nextAssignment = 0;
    qint64 nextCategory = 0;
    QList<ReplicaSubscription> subscriptions;
    QList<ReplicaConsumer> consumers;
    QStringList missingSettings; ///< of the server, as they should be
    qint64 secondsAhead = 0;     ///< of the latest row before this server's clock: some clock is wrong

    /// Whether the site takes and gives rows as it should.
    bool isWorking() const;
};

struct ReplicationOptions {
    Long digit = 0;
    QString address;       ///< of this catalogue, as the server itself reaches it
    QStringList peers;     ///< of the other catalogues, as both this program and the server reach them
    bool sameRows = false; ///< somebody vouches that this catalogue holds the rows of its peers already
    /// How a peer is opened, by its address; without one as an ordinary catalogue.
    std::function<dao::OpenOptions(const QString& address)> access = {};
};

/// Prepares a catalogue on a server for working together with others: extension, node, all tables in the set that is
/// given away, counters that step by ten, the digit, and a subscription to each peer that was prepared before. A
/// catalogue without rows takes those of the first peer; this waits for them. What is there already stays. 5 for no
/// digit or one that a peer or this catalogue's node has, 3251 for a file, 3204 where both hold rows that nobody
/// compared, 3000 with the settings of the server that are missing.
void prepareReplication(dao::Database& database, const ReplicationOptions& options);

/// 3251 for a file.
ReplicationStatus replicationStatus(dao::Database& database);

/// Sets the replica digit of a catalogue that works alone; on a server its counters give keys that end in it from now
/// on. 5 outside 0 to 9, 3251 for a catalogue that is prepared for working together with others; otherwise errors of
/// Database::setLocalNumber().
void giveReplicaDigit(dao::Database& database, Long digit);

/// The smallest number above the highest present key that ends in the digit, never below 10.
qint64 nextReplicaKey(std::optional<qint64> highest, Long digit);

} // namespace mkl
