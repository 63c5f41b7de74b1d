#pragma once
#include "dao/StoredValue.h"

#include <QByteArrayView>
#include <memory>
#include <optional>
#include <vector>

namespace dao {

/// Rows read from the engine, packed into blocks of memory: per value a mark, then a number in as few bytes as it
/// needs or the bytes of a text. Values are taken apart when they are read.
class RowStore {
public:
    /// Building a row: the values in order, then endRow().
    void appendNull();
    void appendInteger(qint64 value);
    void appendReal(double value);
    void appendText(QByteArrayView utf8);
    void appendBlob(QByteArrayView bytes);
    void append(const StoredValue& value);
    void endRow();

    qsizetype size() const { return static_cast<qsizetype>(rows_.size()); }
    bool isEmpty() const { return rows_.empty(); }
    void clear();

    /// Its bytes refer to the store: they hold until clear() or the end of the store.
    StoredValue value(qsizetype row, int column) const;

    /// What decode() makes of it, without the way around.
    mkl::Variant decoded(qsizetype row, int column, jet::ColumnType type) const;
    /// The bytes of a text, nothing for another value; they hold as long.
    std::optional<QByteArrayView> text(qsizetype row, int column) const;

    /// Memory taken, for figures.
    qsizetype bytesTaken() const;

private:
    const char* find(qsizetype row, int column) const;
    void appendBytes(quint8 mark, QByteArrayView bytes);
    template<class T>
    void appendNumber(quint8 mark, T number);
    char* room(qsizetype size);
    char* nextBlock(qsizetype size);

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::vector<const char*> rows_;
    char* rowStart_ = nullptr; ///< of the row under construction
    char* next_ = nullptr;
    char* end_ = nullptr;
    qsizetype nextBlockSize_ = 256;
    qsizetype blockBytes_ = 0;
};

} // namespace dao
