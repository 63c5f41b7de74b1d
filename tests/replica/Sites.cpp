#include "Sites.h"

#include "catalogue/CatalogueReplication.h"
#include "catalogue/CatalogueTables.h"

#include <QDeadlineTimer>
#include <QThread>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

const QStringList replicating = {u"shared_preload_libraries=pglogical"_s,
                                 u"wal_level=logical"_s,
                                 u"track_commit_timestamp=on"_s,
                                 u"max_worker_processes=16"_s,
                                 u"max_replication_slots=8"_s,
                                 u"max_wal_senders=8"_s,
                                 u"pglogical.conflict_resolution=last_update_wins"_s,
                                 u"wal_retrieve_retry_interval=200ms"_s,
                                 u"wal_receiver_status_interval=1s"_s};

// Later versions let only listed libraries read the log.
QStringList permission() {
    const QString setting = u"output_plugin_libraries"_s;
    return PostgresServer::knows(setting) ? QStringList{setting + u"=pgoutput,pglogical_output"_s} : QStringList();
}

} // namespace

bool eventually(const std::function<bool()>& condition) {
    const QDeadlineTimer patience(60'000);
    while (!condition()) {
        if (patience.hasExpired()) return false;
        QThread::msleep(10);
    }
    return true;
}

Site::Site(const QStringList& settings, int clockAhead)
    : server_(replicating + permission() + settings, clockAhead) {
    runOnServer(server_.urlOf("postgres"), "CREATE DATABASE katalog");
    createCatalogue(url());
}

Ref<dao::Database> Site::open() const {
    return openCatalogue(*dao::DBEngine::CreateWorkspace(), url());
}

void Site::execute(const QStringList& statements) const {
    const Ref<dao::Database> database = open();
    for (const QString& statement : statements)
        database->Execute(statement, dao::dbFailOnError);
}

QString Site::rows() const {
    QString all;
    for (const CatalogueTable& table : catalogueTables())
        all += table.name + u'\n' +
               QString::fromUtf8(native(
                   u"SELECT string_agg(t::text, E'\\n' ORDER BY t::text) FROM public.\"%1\" t"_s.arg(table.name))) +
               u'\n';
    return all;
}

Sites::Sites(int count, const QStringList& statements, const QStringList& settings, int clockAhead) {
    for (int i = 0; i < count; ++i)
        sites_.push_back(std::make_unique<Site>(settings, i == 0 ? clockAhead : 0));
    sites_[0]->execute(statements);
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < count; ++i) {
            ReplicationOptions options;
            options.digit = i + 1;
            options.address = sites_[i]->url();
            for (int peer = 0; peer < (round == 0 ? i : count); ++peer)
                if (peer != i) options.peers.append(sites_[peer]->url());
            prepareReplication(*sites_[i]->open(), options);
        }
    for (const auto& site : sites_)
        if (!eventually([&] { return replicationStatus(*site->open()).isWorking(); }))
            throw std::runtime_error("the sites do not find each other");
}

void Sites::forEachSubscription(const QString& call) {
    for (const auto& site : sites_)
        site->native(u"SELECT pglogical.%1(sub_name, true) FROM pglogical.subscription"_s.arg(call));
}

void Sites::cut() {
    forEachSubscription(u"alter_subscription_disable"_s);
    for (const auto& site : sites_)
        if (!eventually([&] {
                return site->native(u"SELECT count(*) FROM pg_stat_activity WHERE application_name ~ '^mkl_' AND "
                                    "backend_type = 'walsender'"_s) == "0";
            }))
            throw std::runtime_error("a line stays up");
}

void Sites::join() {
    forEachSubscription(u"alter_subscription_enable"_s);
}

bool Sites::areSettled() const {
    return std::ranges::all_of(sites_, [](const std::unique_ptr<Site>& site) {
        return site->native(u"SELECT count(*) FROM pg_replication_slots WHERE NOT active OR confirmed_flush_lsn < "
                            "pg_current_wal_insert_lsn()"_s) == "0";
    });
}

bool Sites::settle() {
    return eventually([this] { return areSettled(); });
}

bool Sites::becomeEqual() {
    return eventually([this] {
        return areSettled() &&
               std::ranges::all_of(sites_, [&](const auto& site) { return site->rows() == sites_[0]->rows(); });
    });
}

} // namespace mkl
