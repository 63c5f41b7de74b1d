#include "dao/Workspace.h"

#include "base/Texts.h"
#include "dao/Connection.h"
#include "dao/Errors.h"
#include "dao/ServerAddress.h"
#include "dao/WorkspaceNotifier.h"
#include "dao/postgres/PostgresServer.h"
#include "dao/sqlite/SqliteFile.h"

#include <QDebug>
#include <algorithm>
#include <vector>

namespace dao {

struct Workspace::Data {
    std::vector<std::weak_ptr<Connection>> connections;
    int depth = 0;
    int busyTimeout = OpenOptions().busyTimeoutMilliseconds;
    WorkspaceNotifier notifier;

    mkl::Ref<Database> adopt(const QString& name, const std::shared_ptr<Connection>& connection);
    std::vector<std::shared_ptr<Connection>> opened();
    void rollbackTo(int newDepth);
};

// A database that is opened within a transaction takes part in it.
mkl::Ref<Database> Workspace::Data::adopt(const QString& name, const std::shared_ptr<Connection>& connection) {
    while (connection->transaction().depth() < depth)
        connection->transaction().begin();
    connections.push_back(connection);
    return mkl::makeRef<Database>(name, connection);
}

std::vector<std::shared_ptr<Connection>> Workspace::Data::opened() {
    std::erase_if(connections, [](const std::weak_ptr<Connection>& connection) {
        const auto alive = connection.lock();
        return !alive || !alive->isOpen();
    });
    std::vector<std::shared_ptr<Connection>> result;
    for (const auto& connection : connections)
        result.push_back(connection.lock());
    return result;
}

void Workspace::Data::rollbackTo(int newDepth) {
    depth = newDepth;
    for (const auto& connection : opened())
        while (connection->transaction().depth() > newDepth)
            connection->transaction().rollback();
}

namespace {

// The one place that chooses the engine.
std::shared_ptr<Connection> openConnection(const QString& name, const OpenOptions& options) {
    return isServerAddress(name) ? openPostgres(name, options) : openSqlite(name, options);
}

} // namespace

Workspace::Workspace()
    : d_(std::make_unique<Data>()) {}

Workspace::~Workspace() {
    if (d_->depth > 0)
        qWarning().noquote() << mkl::text(mkl::TextId::TransactionLeftOpen, {QString::number(d_->depth)});
    try {
        d_->rollbackTo(0);
    } catch (const mkl::RunTimeError&) {
        // The end of the connection undoes the transaction as well.
    }
}

mkl::Ref<Database> Workspace::OpenDatabase(const QString& name, const OpenOptions& options) {
    OpenOptions effective = options;
    if (options.busyTimeoutMilliseconds == OpenOptions().busyTimeoutMilliseconds)
        effective.busyTimeoutMilliseconds = d_->busyTimeout;
    return d_->adopt(name, openConnection(name, effective));
}

mkl::Ref<Database> Workspace::CreateDatabase(const QString& name) {
    const auto connection = createSqlite(name);
    connection->setBusyTimeout(d_->busyTimeout);
    return d_->adopt(name, connection);
}

void Workspace::BeginTrans() {
    try {
        for (const auto& connection : d_->opened())
            connection->transaction().begin();
    } catch (const mkl::RunTimeError&) {
        d_->rollbackTo(d_->depth);
        throw;
    }
    ++d_->depth;
}

void Workspace::CommitTrans() {
    if (d_->depth == 0) mkl::throwError(err::NoTransaction);
    for (const auto& connection : d_->opened())
        connection->transaction().requireSound();
    for (const auto& connection : d_->opened())
        if (connection->transaction().depth() == d_->depth) connection->transaction().commit();
    --d_->depth;
}

void Workspace::Rollback() {
    if (d_->depth == 0) mkl::throwError(err::NoTransaction);
    d_->rollbackTo(d_->depth - 1);
}

int Workspace::transactionDepth() const {
    return d_->depth;
}

bool Workspace::isDoomed() const {
    return std::ranges::any_of(d_->opened(),
                               [](const auto& connection) { return connection->transaction().isDoomed(); });
}

void Workspace::setBusyTimeout(Long milliseconds) {
    if (milliseconds < 0) mkl::throwError(mkl::err::InvalidArgument);
    d_->busyTimeout = milliseconds;
    for (const auto& connection : d_->opened())
        connection->setBusyTimeout(milliseconds);
}

Long Workspace::BusyTimeout() const {
    return d_->busyTimeout;
}

WorkspaceNotifier& Workspace::notifier() const {
    return d_->notifier;
}

bool DBEngine::isServer(const QString& name) {
    return isServerAddress(name);
}

mkl::Ref<Workspace> DBEngine::CreateWorkspace() {
    return mkl::makeRef<Workspace>();
}

} // namespace dao
