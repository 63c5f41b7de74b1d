#include "apps/mklart/Commands.h"
#include "apps/mklart/QueryCommand.h"
#include "apps/mklart/ResultPrinter.h"

namespace mkl {

int runFind(const Invocation& call) {
    return runQuery(call, call.argument(2), [&call]() -> Answer {
        const auto file = std::make_shared<QueryFile>(call);
        const auto rows = file->database().OpenRecordset(call.argument(1), dao::dbOpenSnapshot);
        return [file, rows](const QString& criterion, bool json) {
            const QueryResult result(rows, criterion);
            return json ? printJson(result) : printTable(result);
        };
    });
}

} // namespace mkl
