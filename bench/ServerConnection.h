#pragma once
// The server's own client interface, as a program without a data layer would use it.
#include <QByteArray>
#include <QString>
#include <libpq-fe.h>
#include <memory>
#include <span>

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
    RawResult run(const char* name, std::span<const int> parameters = {}) const;

private:
    RawResult checked(PGresult* result) const;

    std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

/// Fields of a result in binary.
int integerAt(const PGresult& result, int row, int column);
QString textAt(const PGresult& result, int row, int column);
int columnOf(const PGresult& result, const char* name);

} // namespace bench
