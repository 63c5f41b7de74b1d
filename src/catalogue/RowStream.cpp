#include "catalogue/RowStream.h"

#include "catalogue/Refusal.h"

#include <cstring>
#include <limits>
#include <type_traits>

namespace mkl {

namespace {

// Kinds of frames.
constexpr char unknownTable = 'U', unknownColumn = 'u', tableBegin = 'T', tableRows = 'R', tableEnd = 'E',
               failure = 'F', streamEnd = 'Z';
constexpr qsizetype headSize = 1 + sizeof(quint32);
constexpr std::size_t rowBlock = 60000;

template<class T>
void put(std::string& bytes, T value) {
    static_assert(std::is_trivially_copyable_v<T>);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void put(std::string& bytes, const QString& text) {
    put(bytes, static_cast<quint32>(text.size()));
    bytes.append(reinterpret_cast<const char*>(text.constData()),
                 static_cast<std::size_t>(text.size()) * sizeof(QChar));
}

void putValue(std::string& bytes, const Variant& value) {
    put(bytes, value.type());
    switch (value.type()) {
    case Variant::Type::Null: break;
    case Variant::Type::Boolean: put(bytes, value.toBoolean()); break;
    case Variant::Type::Int: put(bytes, value.toLong()); break;
    case Variant::Type::Double: put(bytes, value.toDouble()); break;
    case Variant::Type::Currency: put(bytes, value.toCurrency()); break;
    case Variant::Type::Date: put(bytes, value.toDate()); break;
    case Variant::Type::Text: put(bytes, value.toText()); break;
    case Variant::Type::Binary: throwError(err::TypeMismatch);
    }
}

[[noreturn]] void broken() {
    refuse(refusal::Damaged, TextId::ImportReaderDied);
}

/// Reads what put() wrote; every read is checked against the end.
class Parcel {
public:
    explicit Parcel(QByteArrayView bytes)
        : bytes_(bytes) {}

    bool atEnd() const { return bytes_.isEmpty(); }

    template<class T>
    T take() {
        T value;
        std::memcpy(&value, taken(sizeof value).data(), sizeof value);
        return value;
    }

    QString takeText() {
        const auto length = qsizetype(take<quint32>());
        QString text(length, Qt::Uninitialized);
        const QByteArrayView units = taken(length * qsizetype(sizeof(QChar)));
        std::memcpy(text.data(), units.data(), units.size());
        return text;
    }

    Variant takeValue() {
        switch (take<Variant::Type>()) {
        case Variant::Type::Null: return {};
        case Variant::Type::Boolean: return Variant(take<quint8>() != 0);
        case Variant::Type::Int: return Variant(take<Long>());
        case Variant::Type::Double: return Variant(take<double>());
        case Variant::Type::Currency: return Variant::currency(take<qint64>());
        case Variant::Type::Date: return Variant::date(take<double>());
        case Variant::Type::Text: return Variant(takeText());
        case Variant::Type::Binary: break;
        }
        broken();
    }

private:
    QByteArrayView taken(qsizetype count) {
        if (count > bytes_.size()) broken();
        const QByteArrayView result = bytes_.first(count);
        bytes_ = bytes_.sliced(count);
        return result;
    }

    QByteArrayView bytes_;
};

} // namespace

RowStreamWriter::RowStreamWriter(QIODevice& device)
    : device_(device) {}

void RowStreamWriter::passOverTable(const QString& table) {
    std::string content;
    put(content, table);
    writeFrame(unknownTable, content);
}

void RowStreamWriter::passOverColumn(const QString& table, const QString& column) {
    std::string content;
    put(content, table);
    put(content, column);
    writeFrame(unknownColumn, content);
}

void RowStreamWriter::beginTable(int table, const QList<int>& columns, qint64 expectedRows) {
    std::string content;
    put(content, static_cast<quint8>(table));
    put(content, expectedRows);
    for (const int column : columns)
        put(content, static_cast<quint8>(column));
    writeFrame(tableBegin, content);
}

void RowStreamWriter::row(std::span<const Variant> values) {
    for (const Variant& value : values)
        putValue(rows_, value);
    if (rows_.size() >= rowBlock) flushRows();
}

void RowStreamWriter::endTable() {
    flushRows();
    writeFrame(tableEnd, {});
}

void RowStreamWriter::fail(Long number, const QString& description) {
    std::string content;
    put(content, number);
    put(content, description);
    writeFrame(failure, content);
}

void RowStreamWriter::finish() {
    writeFrame(streamEnd, {});
}

void RowStreamWriter::flushRows() {
    if (!rows_.empty()) writeFrame(tableRows, rows_);
    rows_.clear();
}

void RowStreamWriter::writeFrame(char kind, const std::string& content) {
    std::string frame(1, kind);
    put(frame, static_cast<quint32>(content.size()));
    frame += content;
    if (device_.write(frame.data(), static_cast<qint64>(frame.size())) < 0) broken();
}

RowStreamReader::RowStreamReader(RowSink& sink)
    : sink_(sink) {}

void RowStreamReader::take(const QByteArray& bytes) {
    pending_ += bytes;
    qsizetype at = 0;
    while (pending_.size() - at >= headSize) {
        quint32 length = 0;
        std::memcpy(&length, pending_.constData() + at + 1, sizeof length);
        if (length > quint32(std::numeric_limits<qint32>::max())) broken();
        if (pending_.size() - at - headSize < qsizetype(length)) break;
        frame(pending_[at], QByteArrayView(pending_).sliced(at + headSize, length));
        at += headSize + qsizetype(length);
    }
    pending_.remove(0, at);
}

void RowStreamReader::frame(char kind, QByteArrayView content) {
    if (complete_) broken();
    Parcel parcel(content);
    switch (kind) {
    case unknownTable: return sink_.passOverTable(parcel.takeText());
    case unknownColumn: {
        const QString table = parcel.takeText();
        return sink_.passOverColumn(table, parcel.takeText());
    }
    case tableBegin: return beginTable(content);
    case tableRows: return rows(content);
    case tableEnd: inTable_ = false; return sink_.endTable();
    case failure: {
        const Long number = parcel.take<Long>();
        throw RunTimeError(number, parcel.takeText());
    }
    case streamEnd: complete_ = true; return;
    default: broken();
    }
}

void RowStreamReader::beginTable(QByteArrayView content) {
    Parcel parcel(content);
    const int table = parcel.take<quint8>();
    const qint64 expectedRows = parcel.take<qint64>();
    if (table >= catalogueTables().size()) broken();
    QList<int> columns;
    while (!parcel.atEnd()) {
        columns.append(parcel.take<quint8>());
        if (columns.last() >= catalogueTables()[table].columns.size()) broken();
    }
    if (columns.isEmpty()) broken();
    values_.assign(columns.size(), {});
    inTable_ = true;
    sink_.beginTable(table, columns, expectedRows);
}

void RowStreamReader::rows(QByteArrayView content) {
    if (!inTable_) broken();
    Parcel parcel(content);
    while (!parcel.atEnd()) {
        for (Variant& value : values_)
            value = parcel.takeValue();
        sink_.row(values_);
    }
}

} // namespace mkl
