#pragma once
// A catalogue on a server of this program alone, open twice: through the data layer and by the server's own client
// interface, as a program without a data layer would use it.
#include "dao/Workspace.h"

#include <libpq-fe.h>
#include <memory>
#include <stdexcept>

namespace bench {

using RawResult = std::unique_ptr<PGresult, decltype(&PQclear)>;

class ServerConnection {
public:
    explicit ServerConnection(const QString& url);

    PGconn* handle() const { return connection_.get(); }
    /// Native statements, several allowed.
    void exec(const QByteArray& native) const;
    void prepare(const char* name, const char* native) const;
    /// Numbers are the only parameters that the benchmarks need; the rows come in binary.
    RawResult run(const char* name, std::initializer_list<int> parameters = {}) const;

private:
    RawResult checked(PGresult* result) const;

    std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

/// Fields of a result in binary.
int integerAt(const PGresult& result, int row, int column);
QString textAt(const PGresult& result, int row, int column);
int columnOf(const PGresult& result, const char* name);

class ServerCatalogue {
public:
    /// Articles, a forest in which each category but the first ones has ten below it, and a category of so many
    /// positions.
    ServerCatalogue(int articles, int categories, int positions);
    ~ServerCatalogue();
    Q_DISABLE_COPY_MOVE(ServerCatalogue)

    /// Why there is no server; empty if there is one.
    static QString missing();

    static constexpr int category = 13;
    void fillPositions(int positions) const;

    mkl::Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    mkl::Ref<dao::Database> database;
    std::unique_ptr<ServerConnection> raw;

private:
    QString url_;
};

} // namespace bench
