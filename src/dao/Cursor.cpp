#include "dao/Cursor.h"

#include "dao/Errors.h"

namespace dao {

Cursor::Cursor(std::shared_ptr<Connection> connection, std::shared_ptr<const Columns> columns)
    : connection_(std::move(connection))
    , columns_(std::move(columns)) {}

Long Cursor::absolutePosition() const {
    mkl::throwError(err::NotSupportedByType);
}

QString Cursor::index() const {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::setIndex(const QString&) {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::seek(QStringView, const mkl::Variant&) {
    mkl::throwError(err::NotSupportedByType);
}

} // namespace dao
