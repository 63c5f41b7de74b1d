#include "core/TextOrder.h"

#include "jet/Collation.h"

namespace mkl {

QByteArray textSortKey(const QString& text) {
    return jet::sortKey(text);
}

} // namespace mkl
