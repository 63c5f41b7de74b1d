#include "dao/postgres/PostgresPipeline.h"

namespace dao {

PostgresPipeline::PostgresPipeline(PGconn* connection)
    : connection_(connection)
    , sound_(PQenterPipelineMode(connection) == 1) {}

PostgresPipeline::~PostgresPipeline() {
    PQexitPipelineMode(connection_);
}

void PostgresPipeline::send(const char* text) {
    sound_ = sound_ && PQsendQueryParams(connection_, text, 0, nullptr, nullptr, nullptr, nullptr, 0) == 1;
    ++sent_;
}

void PostgresPipeline::sendPrepared(const QByteArray& statement, const PostgresValues& values) {
    constexpr int inBinary = 1;
    sound_ = sound_ &&
             PQsendQueryPrepared(connection_, statement.constData(), static_cast<int>(values.values.size()),
                                 values.values.data(), values.lengths.data(), values.formats.data(), inBinary) == 1;
    ++sent_;
}

void PostgresPipeline::streamNext(PostgresRowSink sink) {
    streamed_ = sent_;
    sink_ = std::move(sink);
}

// The mode belongs to the statement whose results come next.
void PostgresPipeline::beginNext() {
    if (sink_ && results_.size() == streamed_) PQsetSingleRowMode(connection_);
}

void PostgresPipeline::take(PostgresResult result) {
    if (PQresultStatus(result.get()) != PGRES_SINGLE_TUPLE) {
        results_.push_back(std::move(result));
        return;
    }
    if (failure_) return; // the others are only to be out of the way
    try {
        sink_(*result);
    } catch (...) {
        failure_ = std::current_exception();
    }
}

std::vector<PostgresResult> PostgresPipeline::results() {
    sound_ = sound_ && PQpipelineSync(connection_) == 1;
    if (sound_) beginNext();
    while (sound_) {
        PostgresResult result(PQgetResult(connection_));
        if (!result) {
            sound_ = PQstatus(connection_) == CONNECTION_OK;
            beginNext();
        } else if (PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC) {
            break;
        } else {
            take(std::move(result));
            sound_ = PQstatus(connection_) == CONNECTION_OK;
        }
    }
    if (failure_) std::rethrow_exception(failure_);
    return std::move(results_);
}

} // namespace dao
