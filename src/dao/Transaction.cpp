#include "dao/Transaction.h"

#include "dao/Connection.h"
#include "dao/Errors.h"

namespace dao {

void Transaction::begin() {
    requireSound();
    if (depth_ == 0)
        connection_.begin();
    else
        connection_.savepoint(savepointName(depth_));
    ++depth_;
}

void Transaction::beginSingle() {
    if (depth_ > 0) return begin();
    connection_.beginSingle();
    ++depth_;
}

void Transaction::commit() {
    if (depth_ == 0) mkl::throwError(err::NoTransaction);
    requireSound();
    if (depth_ == 1)
        connection_.commit();
    else
        connection_.release(savepointName(depth_ - 1));
    --depth_;
}

void Transaction::rollback() {
    if (depth_ == 0) mkl::throwError(err::NoTransaction);
    const bool undoneAlready = isDoomed();
    if (!undoneAlready) connection_.readPending();
    --depth_;
    if (undoneAlready) return;
    if (depth_ == 0) {
        connection_.rollback();
        return;
    }
    connection_.rollbackTo(savepointName(depth_));
    connection_.release(savepointName(depth_));
}

bool Transaction::isDoomed() const {
    return depth_ > 0 && !connection_.inTransaction();
}

void Transaction::requireSound() const {
    if (isDoomed()) mkl::throwError(err::TransactionGivenUp);
}

QByteArray Transaction::savepointName(int depth) {
    return "level" + QByteArray::number(depth);
}

} // namespace dao
