#pragma once
#include <QByteArray>
#include <QString>

namespace mkl {

/// Bytes whose order is the one in which people here look up words: without case, umlauts beside their letters. The
/// data layer sorts by the same.
QByteArray textSortKey(const QString& text);

} // namespace mkl
