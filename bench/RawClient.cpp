#include "bench/RawClient.h"

#include "bench/RawDatabase.h"
#include "bench/ServerConnection.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

class FileQuery final : public RawQuery {
public:
    FileQuery(const RawDatabase& database, const QString& statement)
        : statement_(database, statement.toUtf8().constData()) {}

    void bind(int number, int value) override { statement_.bind(number, value); }
    bool step() override { return statement_.step(); }
    int integer(int column) const override { return statement_.integer(column); }
    void reset() override { statement_.reset(); }

private:
    RawStatement statement_;
};

class FileClient final : public RawClient {
public:
    explicit FileClient(const QString& file)
        : database_(file) {}

    void exec(const QString& statements) override {
        const QByteArray text = statements.toUtf8();
        database_.require(sqlite3_exec(database_.handle(), text.constData(), nullptr, nullptr, nullptr));
    }
    std::unique_ptr<RawQuery> prepare(const QString& statement) override {
        return std::make_unique<FileQuery>(database_, statement);
    }
    void begin() override { exec(u"BEGIN IMMEDIATE"_s); }
    QString name() const override { return u"C API"_s; }

private:
    RawDatabase database_;
};

class ServerQuery final : public RawQuery {
public:
    ServerQuery(const ServerConnection& connection, QByteArray name)
        : connection_(connection)
        , name_(std::move(name)) {}

    void bind(int number, int value) override {
        if (parameters_.size() < size_t(number)) parameters_.resize(size_t(number));
        parameters_[size_t(number - 1)] = value;
    }
    bool step() override {
        if (!rows_) rows_ = connection_.run(name_.constData(), parameters_);
        return ++row_ < PQntuples(rows_.get());
    }
    int integer(int column) const override { return integerAt(*rows_, row_, column); }
    void reset() override {
        rows_.reset();
        row_ = -1;
    }

private:
    const ServerConnection& connection_;
    QByteArray name_;
    std::vector<int> parameters_;
    RawResult rows_{nullptr, &PQclear};
    int row_ = -1;
};

class ServerClient final : public RawClient {
public:
    explicit ServerClient(const QString& url)
        : connection_(url) {}

    void exec(const QString& statements) override { connection_.exec(statements.toUtf8()); }
    std::unique_ptr<RawQuery> prepare(const QString& statement) override {
        const QByteArray name = "raw" + QByteArray::number(++count_);
        connection_.prepare(name.constData(), QString(statement).replace(u'?', u'$').toUtf8().constData());
        return std::make_unique<ServerQuery>(connection_, name);
    }
    void begin() override { exec(u"BEGIN"_s); }
    QString name() const override { return u"libpq"_s; }

private:
    ServerConnection connection_;
    int count_ = 0;
};

} // namespace

std::unique_ptr<RawClient> rawClient(Engine engine, const QString& catalogue) {
    if (engine == Engine::File) return std::make_unique<FileClient>(catalogue);
    return std::make_unique<ServerClient>(catalogue);
}

} // namespace bench
