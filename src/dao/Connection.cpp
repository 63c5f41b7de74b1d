#include "dao/Connection.h"

#include "dao/Errors.h"

namespace dao {

void Connection::requireWritable() const {
    if (!isUpdatable()) mkl::throwError(err::ReadOnly);
    transaction_.requireSound();
}

} // namespace dao
