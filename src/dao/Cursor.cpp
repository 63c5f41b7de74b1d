#include "dao/Cursor.h"

#include "dao/Errors.h"

namespace dao {

Cursor::Cursor(std::shared_ptr<Connection> connection, std::shared_ptr<const Columns> columns)
    : connection_(std::move(connection))
    , columns_(std::move(columns)) {}

Long Cursor::absolutePosition() const {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::setAbsolutePosition(Long) {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::moveBy(Long rows) {
    if (rows == 0) value(0); // there must be a row to stay on
    for (; rows > 0; --rows) {
        moveNext();
        if (isEof()) return;
    }
    for (; rows < 0; ++rows) {
        movePrevious();
        if (isBof()) return;
    }
}

void Cursor::find(FindMode, QStringView) {
    mkl::throwError(err::NotSupportedByType);
}

QString Cursor::index() const {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::setIndex(const QString&) {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::seek(QStringView, std::span<const mkl::Variant>) {
    mkl::throwError(err::NotSupportedByType);
}

mkl::Variant Cursor::bookmark() const {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::setBookmark(const mkl::Variant&) {
    mkl::throwError(err::NotSupportedByType);
}

mkl::Variant Cursor::lastModified() const {
    mkl::throwError(err::NotSupportedByType);
}

std::unique_ptr<Cursor> Cursor::clone() const {
    mkl::throwError(err::NotSupportedByType);
}

std::unique_ptr<Cursor> Cursor::derive(const QString&, const QString&, Long) {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::requery() {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::edit() {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::addNew() {
    mkl::throwError(err::NotSupportedByType);
}

void Cursor::setValue(int, const mkl::Variant&) {
    mkl::throwError(err::UpdateWithoutEdit);
}

void Cursor::update() {
    mkl::throwError(err::UpdateWithoutEdit);
}

void Cursor::cancelUpdate() {
    mkl::throwError(err::UpdateWithoutEdit);
}

void Cursor::remove() {
    mkl::throwError(err::NotSupportedByType);
}

} // namespace dao
