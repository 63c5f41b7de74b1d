#pragma once
#include "base/Variant.h"
#include "jet/model/Schema.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <memory>
#include <span>
#include <vector>

namespace dao {

class Connection;

/// Appends many rows to one table through one prepared statement. Whoever fills a table wraps it in a transaction.
class RowWriter {
public:
    RowWriter(std::shared_ptr<Connection> connection, const jet::Table& table, const QStringList& columns);

    /// One row, the values in the order of the columns. 3022 doubled key, 3058 and 3314 Null where none may be,
    /// 3346 wrong number of values, 3163 a text that is too long, 3421 and 6 a value that does
    /// not fit its column.
    void append(std::span<const mkl::Variant> values);

    /// Several rows in one statement, one behind the other: cheaper than row by row. All are stored or, on an error,
    /// none. Blocks should be of one size, since each size is a statement of its own.
    void appendBlock(std::span<const mkl::Variant> values);

private:
    struct TargetColumn {
        jet::Column facts;
        bool isKey; ///< of the primary key, and no counter fills it
    };

    const QByteArray& statementFor(qsizetype rows);

    std::shared_ptr<Connection> connection_;
    std::vector<TargetColumn> columns_;
    QByteArray head_;   ///< of the statement, up to the values
    QByteArray native_; ///< the whole of it, for blocks of blockRows_
    qsizetype blockRows_ = 0;
};

} // namespace dao
