#include "core/TextOrder.h"

#include "jet/functions/Collation.h"

namespace mkl {

QByteArray textSortKey(const QString& text) {
    return jet::sortKey(text);
}

} // namespace mkl
