#include "dao/SnapshotCursor.h"

#include "dao/Errors.h"
#include "dao/StoredRowReader.h"
#include "jet/syntax/Lexer.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

bool isCalculation(const jet::Token& token, const jet::Token& before) {
    using jet::TokenKind;
    if (jet::keywordOf(token.text) == jet::Keyword::Mod && token.kind == TokenKind::Word) return true;
    if (token.kind != TokenKind::Symbol) return false;
    if (token.symbol == u'(')
        return before.kind == TokenKind::Word && jet::keywordOf(before.text) == jet::Keyword::None;
    return !u"(),.!=<>"_s.contains(QChar(token.symbol)) && token.symbol != jet::lessOrEqualSign &&
           token.symbol != jet::greaterOrEqualSign && token.symbol != jet::notEqualSign;
}

// Comparisons of columns with values alone: they cannot fail, so it does not matter in which rows they are made.
bool isPlain(QStringView criterion) {
    jet::Lexer lexer(criterion);
    jet::Token before;
    for (jet::Token token = lexer.next(); token.kind != jet::TokenKind::End; token = lexer.next()) {
        if (isCalculation(token, before)) return false;
        before = token;
    }
    return true;
}

// The walk over the rows would meet it as well.
bool isOfTheEngine(const mkl::RunTimeError& error) {
    constexpr std::array numbers{err::OutOfMemory, err::DiskFull, err::DiskError,    err::DamagedDatabase,
                                 err::Interrupted, err::Locked,   err::ObjectInvalid};
    return std::ranges::find(numbers, error.number()) != numbers.end();
}

} // namespace

SnapshotCursor::SnapshotCursor(std::shared_ptr<SnapshotRows> rows, Long type, Derivations derivations)
    : ScrollCursor(rows->source().connection(), rows->columns(),
                   type == dbOpenSnapshot ? AfterFailedFind::Stays : AfterFailedFind::Nowhere)
    , rows_(std::move(rows))
    , type_(type)
    , derivations_(std::move(derivations)) {
    if (rows_->isBegun())
        begin();
    else
        beginLater();
}

SnapshotCursor::SnapshotCursor(const SnapshotCursor& original, Clone)
    : ScrollCursor(original.sharedConnection(), original.sharedColumns(), AfterFailedFind::Stays)
    , rows_(original.rows_)
    , type_(original.type_)
    , derivations_(original.derivations_) {}

mkl::Variant SnapshotCursor::value(int ordinal) const {
    return rows_->value(currentRow(), ordinal);
}

std::unique_ptr<Cursor> SnapshotCursor::clone() const {
    return std::unique_ptr<Cursor>(new SnapshotCursor(*this, Clone()));
}

std::unique_ptr<Cursor> SnapshotCursor::derive(const QString& filter, const QString& sort, Long type) {
    const Long derivedAs = derivedType(type, type_);
    const Derivation derivation{filter, sort};
    return cursorOver(derivedRows(*rows_, derivation), derivedAs, derivations_ + Derivations{derivation});
}

void SnapshotCursor::requery() {
    rows_ = runAgain(rows_->source(), derivations_);
    begin();
}

void SnapshotCursor::edit() {
    refuseEditing();
}

void SnapshotCursor::addNew() {
    refuseEditing();
}

void SnapshotCursor::remove() {
    refuseEditing();
}

void SnapshotCursor::refuseEditing() const {
    if (type_ == dbOpenSnapshot) mkl::throwError(err::NotSupportedByType);
    mkl::throwError(connection().isReadOnly() ? err::ReadOnly : err::NotUpdatable);
}

qsizetype SnapshotCursor::search(const jet::Criterion& criterion, qsizetype first, int step) const {
    rows_->read();
    StoredRowReader reader(*rows_->store(), columns());
    const qsizetype count = rows_->count();
    for (qsizetype row = first; row >= 0 && row < count; row += step) {
        reader.moveTo(rows_->place(row));
        if (criterion.holds(reader)) return row;
    }
    return -1;
}

// Whether the criterion stands as it should depends on the statement's shape alone.
bool SnapshotCursor::isKnownFind(const QString& sql) const {
    try {
        return rows_->source().plans()->isKnownFind(jet::shapeOf(sql).key);
    } catch (const mkl::RunTimeError&) {
        return false; // the criterion's own reading says what is wrong with it
    }
}

// The engine finds by an index, and what it finds need not be copied. A failure in a row is left to the walk over
// the rows, which may find one before it.
std::optional<bool> SnapshotCursor::foretell(QStringView criterion) const {
    const QString& table = rows_->source().wholeTable();
    if (rows_->isRead() || table.isEmpty()) return std::nullopt;
    const QString sql = u"SELECT TOP 1 1 FROM ["_s + table + u"] WHERE ("_s + criterion.toString() + u')';
    if (!isKnownFind(sql)) {
        parsed(criterion); // what is no criterion by itself may not stand between the parentheses
        if (!isPlain(criterion)) return std::nullopt;
        rows_->source().plans()->addKnownFind(jet::shapeOf(sql).key);
    }
    try {
        RowStore found;
        QuerySource(sharedConnection(), rows_->source().plans(), sql).read(found);
        return !found.isEmpty();
    } catch (const mkl::RunTimeError& error) {
        if (isOfTheEngine(error)) throw;
        return std::nullopt;
    }
}

} // namespace dao
