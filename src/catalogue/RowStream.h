#pragma once
// Rows as a byte stream between the process that reads a foreign file and the one that stores the rows. Frames of
// kind, length and content; a stream without its end frame is broken.
#include "catalogue/RowSource.h"

#include <QIODevice>
#include <string>
#include <vector>

namespace mkl {

/// Takes rows and writes them to a device.
class RowStreamWriter final : public RowSink {
public:
    explicit RowStreamWriter(QIODevice& device);

    void passOverTable(const QString& table) override;
    void passOverColumn(const QString& table, const QString& column) override;
    void beginTable(int table, const QList<int>& columns, qint64 expectedRows) override;
    void row(std::span<const Variant> values) override;
    void endTable() override;

    /// Ends the stream with the error that stopped the source, or as complete.
    void fail(Long number, const QString& description);
    void finish();

private:
    void writeFrame(char kind, const std::string& content);
    void flushRows();

    QIODevice& device_;
    std::string rows_; ///< not QByteArray, which is slow to grow by a few bytes
};

/// Takes the bytes as they come and hands the rows to a sink. Bytes that are no such stream are error 3049.
class RowStreamReader {
public:
    explicit RowStreamReader(RowSink& sink);

    /// Raises the source's error when its frame has come.
    void take(const QByteArray& bytes);
    bool isComplete() const { return complete_; }

private:
    void frame(char kind, QByteArrayView content);
    void beginTable(QByteArrayView content);
    void rows(QByteArrayView content);

    RowSink& sink_;
    QByteArray pending_;
    std::vector<Variant> values_; ///< one row of the table at hand
    bool inTable_ = false;
    bool complete_ = false;
};

} // namespace mkl
