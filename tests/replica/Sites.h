#pragma once
// Offices with a server each, which exchange their rows in both directions.
#include "catalogue/CatalogueCheck.h"
#include "catalogue/CatalogueFile.h"
#include "support/PostgresServer.h"

#include <functional>
#include <memory>
#include <vector>

namespace mkl {

/// Tries until it is so; false after a minute.
bool eventually(const std::function<bool()>& condition);

/// A server with a catalogue of its own.
class Site {
public:
    explicit Site(const QStringList& settings = {}, int clockAhead = 0);

    QString url() const { return server_.urlOf("katalog"); }
    PostgresServer& server() { return server_; }

    /// Native statements as somebody else on the server gives them; the first value of the last one.
    QByteArray native(const QString& statements) const { return runOnServer(url(), statements.toUtf8()); }
    /// Statements of the dialect, each in a transaction of its own over one connection.
    void execute(const QStringList& statements) const;
    /// The same catalogue, open for as long as the caller needs it.
    Ref<dao::Database> open() const;
    CatalogueCheck check() const { return CatalogueCheck::of(*open()); }
    /// All rows of all tables, in an order that no history changes.
    QString rows() const;

private:
    PostgresServer server_;
};

/// Several sites, each subscribed to all others.
class Sites {
public:
    /// The first one is filled by these statements before the others take its rows; its clock is so many seconds ahead.
    explicit Sites(int count, const QStringList& statements = {}, const QStringList& settings = {}, int clockAhead = 0);

    Site& operator[](std::size_t i) { return *sites_[i]; }
    std::size_t count() const { return sites_.size(); }

    /// Takes the lines between all of them down, and up again at once.
    void cut();
    void join();
    /// Waits until each has dealt with all rows of the others; false if one never does.
    bool settle();
    /// Waits until all hold the same rows; false if they never do.
    bool becomeEqual();

private:
    bool areSettled() const;
    void forEachSubscription(const QString& call);

    std::vector<std::unique_ptr<Site>> sites_;
};

} // namespace mkl
