#pragma once
#include "catalogue/CatalogueReplication.h"

namespace mkl {

/// The statements by which one server is told to exchange rows with others, in its own language: no other engine has
/// such a thing.
class ReplicationSql {
public:
    explicit ReplicationSql(dao::Database& database)
        : database_(database) {}

    static QString nodeName(Long digit);
    static QString subscriptionName(Long digit, Long peer);

    /// Settings that are not as they should be, as lines of postgresql.conf.
    QStringList missingSettings() const;
    bool hasExtension() const;
    void makeExtension() const;
    QString conflictPolicy() const;

    QString ownNode() const; ///< empty without one
    QStringList subscribedNodes() const;
    void makeNode(Long digit, const QString& address) const;
    /// All tables of the catalogue; those without a key of their own are known by the hidden number of their rows.
    void giveTablesAway() const;
    /// takesRows: the rows that are there now come before all changes.
    void subscribe(Long digit, Long peer, const QString& address, bool takesRows) const;
    /// 3000 where they do not come; the subscription is gone then.
    void waitForRows(const QString& subscription) const;

    struct Counter {
        QString table, column, sequence;
        qint64 step = 1;
        qint64 next = 1;
        std::optional<qint64> highest; ///< of the present keys
    };
    /// Of all tables of the catalogue, those of hidden numbers too.
    QList<Counter> counters() const;
    void setCounter(const Counter& counter, qint64 step, qint64 next) const;

    qint64 nextAssignment() const;
    std::optional<qint64> highestCategory(Long digit) const;
    QList<ReplicaSubscription> subscriptions() const;
    QList<ReplicaConsumer> consumers() const;
    /// How far in the future some row was stored, by this server's clock; 0 for a moment that two clocks may differ.
    qint64 secondsAhead() const;

private:
    QStringList missingPlugin() const;
    QString one(const QString& query) const; ///< empty for Null and for no row
    QStringList column(const QString& query) const;

    dao::Database& database_;
};

} // namespace mkl
