#include "dao/ForwardOnlyCursor.h"

#include "dao/Errors.h"

namespace dao {

ForwardOnlyCursor::ForwardOnlyCursor(std::shared_ptr<SnapshotRows> rows, Derivations derivations)
    : Cursor(rows->source().connection(), rows->columns())
    , rows_(std::move(rows))
    , derivations_(std::move(derivations)) {
    rows_->read();
}

void ForwardOnlyCursor::moveFirst() {
    mkl::throwError(err::InvalidOperation);
}

void ForwardOnlyCursor::moveLast() {
    mkl::throwError(err::InvalidOperation);
}

void ForwardOnlyCursor::moveNext() {
    if (isEof()) mkl::throwError(err::NoCurrentRecord);
    ++row_;
}

void ForwardOnlyCursor::movePrevious() {
    mkl::throwError(err::InvalidOperation);
}

mkl::Variant ForwardOnlyCursor::value(int ordinal) const {
    if (isEof()) mkl::throwError(err::NoCurrentRecord);
    return rows_->value(row_, ordinal);
}

std::unique_ptr<Cursor> ForwardOnlyCursor::derive(const QString& filter, const QString& sort, Long type) {
    const Long derivedAs = derivedType(type, dbOpenForwardOnly);
    const Derivation derivation{filter, sort};
    return cursorOver(derivedRows(*rows_, derivation), derivedAs, derivations_ + Derivations{derivation});
}

void ForwardOnlyCursor::requery() {
    rows_ = runAgain(rows_->source(), derivations_);
    rows_->read();
    row_ = 0;
}

} // namespace dao
