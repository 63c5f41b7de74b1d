#include "dao/Connection.h"

#include "dao/Errors.h"
#include "dao/PendingRead.h"

#include <utility>

namespace dao {

void Connection::requireWritable() {
    if (isReadOnly()) mkl::throwError(err::ReadOnly);
    transaction_.requireSound();
    readPending();
}

void Connection::readPending() {
    const auto pending = std::exchange(pending_, {});
    for (PendingRead* read : pending)
        read->readNow();
}

} // namespace dao
