#include "dao/RowWriter.h"

#include "dao/Connection.h"
#include "dao/Errors.h"
#include "jet/model/Target.h"

#include <QByteArrayList>

namespace dao {

RowWriter::RowWriter(std::shared_ptr<Connection> connection, const jet::Table& table, const QStringList& columns)
    : connection_(std::move(connection)) {
    const jet::Target& target = connection_->target();
    QByteArrayList names;
    for (const QString& name : columns) {
        const int ordinal = table.columnIndex(name);
        if (ordinal < 0) mkl::throwError(err::UnknownColumn, {name});
        const jet::Column& column = table.columns[ordinal];
        columns_.push_back({column, table.primaryKey.contains(ordinal) && !column.autoNumber});
        names.append(target.name(column.name));
    }
    head_ = "INSERT INTO " + target.name(table.name) + " (" + names.join(", ") + ") VALUES ";
}

void RowWriter::append(std::span<const mkl::Variant> values) {
    if (values.size() != columns_.size()) mkl::throwError(err::ValueCount);
    appendBlock(values);
}

void RowWriter::appendBlock(std::span<const mkl::Variant> values) {
    if (!connection_->isOpen()) mkl::throwError(err::ObjectInvalid);
    if (columns_.empty() || values.empty() || values.size() % columns_.size() != 0) mkl::throwError(err::ValueCount);
    connection_->requireWritable();
    std::vector<StoredValue> stored;
    stored.reserve(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        const TargetColumn& column = columns_[i % columns_.size()];
        // The engine would make a key up.
        if (column.isKey && values[i].isNull()) mkl::throwError(err::NullInKey);
        stored.push_back(encodeFor(values[i], column.facts));
    }
    connection_->prepared(statementFor(static_cast<qsizetype>(values.size() / columns_.size())), Access::Write)
        ->run(stored);
}

const QByteArray& RowWriter::statementFor(qsizetype rows) {
    if (rows == blockRows_) return native_;
    blockRows_ = rows;
    const jet::Target& target = connection_->target();
    QByteArrayList tuples;
    int number = 0;
    for (qsizetype row = 0; row < rows; ++row) {
        QByteArrayList parameters;
        for (const TargetColumn& column : columns_)
            parameters.append(target.parameter(++number, column.facts.type));
        tuples.append('(' + parameters.join(", ") + ')');
    }
    native_ = head_ + tuples.join(", ");
    return native_;
}

} // namespace dao
