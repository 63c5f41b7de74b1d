#pragma once
#include "base/RunTimeError.h"

#include <QByteArray>
#include <functional>
#include <libpq-fe.h>
#include <memory>
#include <vector>

namespace dao {

struct PostgresResultCloser {
    void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresResult = std::unique_ptr<PGresult, PostgresResultCloser>;

/// Values bound to a statement, as the server takes them.
struct PostgresValues {
    std::vector<QByteArray> kept; ///< texts made for numbers
    std::vector<const char*> values;
    std::vector<int> lengths;
    std::vector<int> formats;
};

/// Takes the rows of a statement while they arrive; the result holds one or several of them.
using PostgresRowSink = std::function<void(const PGresult&)>;

/// Statements sent together, in one round trip. The first one that fails is the last one that is run.
class PostgresPipeline {
public:
    explicit PostgresPipeline(PGconn* connection);
    ~PostgresPipeline();
    Q_DISABLE_COPY_MOVE(PostgresPipeline)

    void send(const char* text);
    void sendPrepared(const QByteArray& statement, const PostgresValues& values);
    /// Rows of the statement that is sent next go to the sink one by one, so that they are nowhere all at once.
    void streamNext(PostgresRowSink sink);
    /// How many were sent.
    size_t size() const { return sent_; }

    /// The results in their order; fewer where the connection was lost. Raises what the sink raised.
    std::vector<PostgresResult> results();

private:
    void take(PostgresResult result);
    void beginNext();

    PGconn* connection_;
    bool sound_;
    size_t sent_ = 0;
    size_t streamed_ = SIZE_MAX;
    PostgresRowSink sink_;
    std::exception_ptr failure_; ///< of the sink
    std::vector<PostgresResult> results_;
};

} // namespace dao
