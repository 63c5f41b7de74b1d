#include "dao/TableBookmark.h"

#include <QDataStream>
#include <atomic>

namespace dao {

quint64 TableBookmark::newGeneration() {
    static std::atomic<quint64> last = quint64(1) << 32; // apart from the numbers of other record sets
    return ++last;
}

mkl::Variant TableBookmark::encode(quint64 generation, const RowKey& key) {
    QByteArray bytes;
    QDataStream out(&bytes, QDataStream::WriteOnly);
    out << generation;
    for (const StoredValue& part : key)
        out << static_cast<quint8>(part.kind) << part.integer << part.real << part.bytes;
    return bytes;
}

std::optional<RowKey> TableBookmark::decode(const mkl::Variant& bookmark, quint64 generation) {
    if (bookmark.type() != mkl::Variant::Type::Binary) return std::nullopt;
    const QByteArray bytes = bookmark.toBinary();
    QDataStream in(bytes);
    quint64 found = 0;
    in >> found;
    if (in.status() != QDataStream::Ok || found != generation) return std::nullopt;
    RowKey key;
    while (!in.atEnd()) {
        quint8 kind = 0;
        StoredValue part;
        in >> kind >> part.integer >> part.real >> part.bytes;
        if (in.status() != QDataStream::Ok) return std::nullopt;
        part.kind = static_cast<StoredValue::Kind>(kind);
        key.append(part);
    }
    return key;
}

} // namespace dao
