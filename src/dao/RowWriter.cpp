#include "dao/RowWriter.h"

#include "dao/Connection.h"
#include "dao/Errors.h"
#include "jet/Target.h"

#include <QByteArrayList>

namespace dao {

RowWriter::RowWriter(std::shared_ptr<Connection> connection, const jet::Table& table, const QStringList& columns)
    : connection_(std::move(connection)) {
    const jet::Target& target = connection_->target();
    QByteArrayList names;
    QByteArrayList parameters;
    for (const QString& name : columns) {
        const int ordinal = table.columnIndex(name);
        if (ordinal < 0) mkl::throwError(err::UnknownColumn, {name});
        const jet::Column& column = table.columns[ordinal];
        columns_.push_back({column.name, column.type, table.primaryKey.contains(ordinal) && !column.autoNumber});
        names.append(target.name(column.name));
        parameters.append(target.parameter(static_cast<int>(columns_.size()), column.type));
    }
    native_ =
        "INSERT INTO " + target.name(table.name) + " (" + names.join(", ") + ") VALUES (" + parameters.join(", ") + ')';
}

void RowWriter::append(std::span<const mkl::Variant> values) {
    if (!connection_->isOpen()) mkl::throwError(err::ObjectInvalid);
    if (values.size() != columns_.size()) mkl::throwError(err::ValueCount);
    connection_->requireWritable();
    std::vector<StoredValue> stored;
    stored.reserve(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        const TargetColumn& column = columns_[i];
        // The engine would make a key up.
        if (column.isKey && values[i].isNull()) mkl::throwError(err::NullInKey);
        stored.push_back(encodeFor(values[i], column.type, column.name));
    }
    connection_->prepared(native_)->run(stored);
}

} // namespace dao
