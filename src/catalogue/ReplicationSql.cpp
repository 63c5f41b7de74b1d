#include "catalogue/ReplicationSql.h"

#include "catalogue/CatalogueTables.h"
#include "catalogue/Refusal.h"

#include <QDeadlineTimer>
#include <QThread>
#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 15'000; // milliseconds

QString literal(QString text) {
    return u'\'' + text.replace(u'\'', u"''"_s) + u'\'';
}

QString quoted(QString name) {
    return u'"' + name.replace(u'"', u"\"\""_s) + u'"';
}

QString tableLiteral(const QString& table) {
    return literal(u"public."_s + quoted(table));
}

std::optional<qint64> optionalNumber(const QString& text) {
    return text.isEmpty() ? std::nullopt : std::optional(text.toLongLong());
}

} // namespace

QString ReplicationSql::nodeName(Long digit) {
    return u"mkl_%1"_s.arg(digit);
}

QString ReplicationSql::subscriptionName(Long digit, Long peer) {
    return u"mkl_%1_from_%2"_s.arg(digit).arg(peer);
}

QString ReplicationSql::one(const QString& query) const {
    const QStringList values = column(query);
    return values.isEmpty() ? QString() : values.first();
}

QStringList ReplicationSql::column(const QString& query) const {
    QStringList values;
    for (const QStringList& row : database_.queryNative(query))
        values.append(row.first());
    return values;
}

QStringList ReplicationSql::missingSettings() const {
    // Without commit times the extension takes whatever comes last, and both sides can end up different.
    struct Setting {
        QString name, value;
    };
    const Setting wanted[] = {{u"wal_level"_s, u"logical"_s},
                              {u"track_commit_timestamp"_s, u"on"_s},
                              {u"pglogical.conflict_resolution"_s, u"last_update_wins"_s}};
    QStringList missing;
    // A setting of a library that is not loaded is not listed, even where somebody wrote it down.
    if (one(u"SELECT name FROM pg_settings WHERE name = 'pglogical.conflict_resolution'"_s).isEmpty())
        missing.append(u"shared_preload_libraries = 'pglogical'"_s);
    for (const auto& [name, value] : wanted)
        if (one(u"SELECT current_setting(%1, true)"_s.arg(literal(name))) != value)
            missing.append(name + u" = "_s + value);
    return missing + missingPlugin();
}

// Later minor versions of the server let nobody read its log through a library that is not listed.
QStringList ReplicationSql::missingPlugin() const {
    const QString plugin = u"pglogical_output"_s;
    const QStringList listed = column(u"SELECT setting FROM pg_settings WHERE name = 'output_plugin_libraries'"_s);
    if (listed.isEmpty()) return {};
    QStringList libraries;
    for (const QString& library : listed.first().split(u',', Qt::SkipEmptyParts))
        libraries.append(library.trimmed());
    if (libraries.contains(plugin)) return {};
    libraries.append(plugin);
    return {u"output_plugin_libraries = '%1'"_s.arg(libraries.join(u", "_s))};
}

bool ReplicationSql::hasExtension() const {
    return !one(u"SELECT extname::text FROM pg_extension WHERE extname = 'pglogical'"_s).isEmpty();
}

void ReplicationSql::makeExtension() const {
    if (!hasExtension()) database_.executeNative(u"CREATE EXTENSION pglogical"_s);
}

QString ReplicationSql::conflictPolicy() const {
    return one(u"SELECT current_setting('pglogical.conflict_resolution', true)"_s);
}

QString ReplicationSql::ownNode() const {
    if (!hasExtension()) return {};
    return one(u"SELECT n.node_name::text FROM pglogical.local_node l JOIN pglogical.node n USING (node_id)"_s);
}

QStringList ReplicationSql::subscribedNodes() const {
    if (!hasExtension()) return {};
    return column(u"SELECT n.node_name::text FROM pglogical.subscription s JOIN pglogical.node n "
                  "ON n.node_id = s.sub_origin"_s);
}

void ReplicationSql::makeNode(Long digit, const QString& address) const {
    database_.executeNative(
        u"SELECT pglogical.create_node(node_name := %1, dsn := %2)"_s.arg(literal(nodeName(digit)), literal(address)));
}

void ReplicationSql::giveTablesAway() const {
    const QString hidden = u"SELECT i.indexrelid::regclass::text FROM pg_index i JOIN pg_attribute a ON "
                           "a.attrelid = i.indrelid AND i.indkey::text = a.attnum::text "
                           "WHERE i.indrelid = %1::regclass AND a.attname = 'mkl_rowid' AND i.indisunique"_s;
    for (const CatalogueTable& table : catalogueTables()) {
        const QString name = tableLiteral(table.name);
        const QString rowNumbers = one(hidden.arg(name));
        QString statements;
        if (!rowNumbers.isEmpty())
            statements =
                u"ALTER TABLE public.%1 REPLICA IDENTITY USING INDEX %2;"_s.arg(quoted(table.name), rowNumbers);
        statements += u"SELECT pglogical.replication_set_add_table('default', %1) WHERE NOT EXISTS (SELECT 1 FROM "
                      "pglogical.replication_set_table WHERE set_reloid = %1::regclass)"_s.arg(name);
        database_.executeNative(statements);
    }
}

void ReplicationSql::subscribe(Long digit, Long peer, const QString& address, bool takesRows) const {
    database_.executeNative(u"SELECT pglogical.create_subscription(subscription_name := %1, provider_dsn := %2, "
                            "replication_sets := '{default}', synchronize_structure := false, synchronize_data := %3, "
                            "forward_origins := '{}')"_s.arg(literal(subscriptionName(digit, peer)), literal(address),
                                                             takesRows ? u"true"_s : u"false"_s));
}

void ReplicationSql::waitForRows(const QString& subscription) const {
    const QString name = literal(subscription);
    QDeadlineTimer workerIsGone(patience);
    for (;;) {
        const QString state = one(u"SELECT status::text FROM pglogical.show_subscription_status(%1)"_s.arg(name));
        if (state == u"replicating") return;
        // It is down for a moment too, until its worker has begun.
        if (state != u"down") workerIsGone.setRemainingTime(patience);
        if (workerIsGone.hasExpired()) break;
        QThread::msleep(50);
    }
    database_.executeNative(u"SELECT pglogical.drop_subscription(%1)"_s.arg(name));
    refuse(refusal::Internal, TextId::ReplicationNoRows, {subscription});
}

QList<ReplicationSql::Counter> ReplicationSql::counters() const {
    QList<Counter> counters;
    for (const CatalogueTable& table : catalogueTables()) {
        const auto rows = database_.queryNative(
            u"SELECT a.attname::text, s.seqrelid::regclass::text, s.seqincrement::text FROM pg_attribute a "
            "JOIN pg_sequence s ON s.seqrelid = pg_get_serial_sequence(%1, a.attname)::regclass "
            "WHERE a.attrelid = %1::regclass AND a.attidentity <> ''"_s.arg(tableLiteral(table.name)),
            3);
        for (const QStringList& row : rows) {
            const qint64 step = row[2].toLongLong();
            const QString next = one(
                u"SELECT (last_value + CASE WHEN is_called THEN %1 ELSE 0 END)::text FROM %2"_s.arg(step).arg(row[1]));
            const QString highest =
                one(u"SELECT max(%1)::text FROM public.%2"_s.arg(quoted(row[0]), quoted(table.name)));
            counters.append({table.name, row[0], row[1], step, next.toLongLong(), optionalNumber(highest)});
        }
    }
    return counters;
}

void ReplicationSql::setCounter(const Counter& counter, qint64 step, qint64 next) const {
    database_.executeNative(
        u"ALTER SEQUENCE %1 INCREMENT BY %2 RESTART WITH %3"_s.arg(counter.sequence).arg(step).arg(next));
}

qint64 ReplicationSql::nextAssignment() const {
    for (const Counter& counter : counters())
        if (counter.table == u"ARTKAT") return counter.next;
    return 0;
}

std::optional<qint64> ReplicationSql::highestCategory(Long digit) const {
    return optionalNumber(one(u"SELECT max(\"Kategorie-Schlüssel\")::text FROM public.\"ARTIKEL/KATEGORIEN\" WHERE "
                              "right(\"Kategorie-Schlüssel\"::text, 1) = '%1'"_s.arg(digit)));
}

QList<ReplicaSubscription> ReplicationSql::subscriptions() const {
    QList<ReplicaSubscription> found;
    for (const QStringList& row :
         database_.queryNative(u"SELECT subscription_name::text, provider_node::text, status::text FROM "
                               "pglogical.show_subscription_status() ORDER BY 1"_s,
                               3))
        found.append({row[0], row[1], row[2]});
    return found;
}

QList<ReplicaConsumer> ReplicationSql::consumers() const {
    QList<ReplicaConsumer> found;
    for (const QStringList& row : database_.queryNative(
             u"SELECT slot_name::text, active::text, pg_wal_lsn_diff(pg_current_wal_lsn(), confirmed_flush_lsn)::text "
             "FROM pg_replication_slots WHERE plugin = 'pglogical_output' AND database = current_database() "
             "ORDER BY 1"_s,
             3))
        found.append({row[0], row[1] == u"true", row[2].toLongLong()});
    return found;
}

qint64 ReplicationSql::secondsAhead() const {
    if (one(u"SELECT current_setting('track_commit_timestamp')"_s) != u"on") return 0;
    constexpr qint64 tolerance = 2;
    qint64 most = 0;
    for (const CatalogueTable& table : catalogueTables()) {
        const QString ahead = one(
            u"SELECT ceil(extract(epoch FROM max(pg_xact_commit_timestamp(xmin)) - clock_timestamp()))::bigint::text "
            "FROM public.%1"_s.arg(quoted(table.name)));
        most = std::max(most, ahead.toLongLong());
    }
    return most > tolerance ? most : 0;
}

} // namespace mkl
