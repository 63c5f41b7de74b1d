#include "dao/ScrollCursor.h"

#include "dao/Errors.h"
#include "jet/evaluation/Criterion.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace dao {

namespace {

struct BookmarkBytes {
    quint64 generation;
    qint64 row;
};

} // namespace

ScrollCursor::ScrollCursor(std::shared_ptr<Connection> connection, std::shared_ptr<const Columns> columns,
                           AfterFailedFind afterFailedFind)
    : Cursor(std::move(connection), std::move(columns))
    , afterFailedFind_(afterFailedFind) {}

void ScrollCursor::begin() {
    noMatch_ = false;
    toFirst();
}

void ScrollCursor::toFirst() const {
    const qsizetype first = nextRow(-1, 1);
    if (first < 0)
        goTo(Place::Eof);
    else
        goTo(Place::Row, first);
}

// Without any row both are true.
bool ScrollCursor::isBof() const {
    settle();
    return place_ == Place::Bof || (place_ != Place::Row && nextRow(-1, 1) < 0);
}

bool ScrollCursor::isEof() const {
    settle();
    return place_ == Place::Eof || (place_ != Place::Row && nextRow(-1, 1) < 0);
}

Long ScrollCursor::recordCount() const {
    settle();
    return static_cast<Long>(numbered().visited - leftOutBefore(numbered().visited));
}

Long ScrollCursor::absolutePosition() const {
    settle();
    return place_ == Place::Row ? static_cast<Long>(row_ - leftOutBefore(row_)) : -1;
}

void ScrollCursor::setAbsolutePosition(Long position) {
    qsizetype row = position < 0 ? -1 : nextRow(position - 1, 1);
    while (row >= 0 && row - leftOutBefore(row) < position)
        row = nextRow(row, 1);
    if (row < 0) mkl::throwError(err::NoCurrentRecord);
    goTo(Place::Row, row);
}

void ScrollCursor::moveFirst() {
    const qsizetype first = nextRow(-1, 1);
    if (first < 0) mkl::throwError(err::NoCurrentRecord);
    goTo(Place::Row, first);
}

void ScrollCursor::moveLast() {
    const qsizetype last = nextRow(rowCount(), -1);
    if (last < 0) mkl::throwError(err::NoCurrentRecord);
    numbered().visited = rowCount();
    goTo(Place::Row, last);
}

void ScrollCursor::moveNext() {
    settle();
    if (place_ == Place::Eof || place_ == Place::Nowhere) mkl::throwError(err::NoCurrentRecord);
    const qsizetype next = nextRow(place_ == Place::Bof ? -1 : row_, 1);
    if (next < 0)
        goTo(Place::Eof);
    else
        goTo(Place::Row, next);
}

void ScrollCursor::movePrevious() {
    settle();
    const bool fromEnd = place_ == Place::Eof && nextRow(-1, 1) >= 0;
    if (place_ != Place::Row && !fromEnd) mkl::throwError(err::NoCurrentRecord);
    const qsizetype previous = nextRow(fromEnd ? rowCount() : row_, -1);
    if (previous < 0)
        goTo(Place::Bof);
    else
        goTo(Place::Row, previous);
}

void ScrollCursor::find(FindMode mode, QStringView criterion) {
    const bool fromAnEnd = mode == FindMode::First || mode == FindMode::Last;
    if (fromAnEnd) {
        if (const auto foretold = foretell(criterion)) {
            noMatch_ = !*foretold;
            if (noMatch_) {
                if (afterFailedFind_ == AfterFailedFind::Nowhere) goTo(Place::Nowhere);
                return;
            }
            unsettledFind_ = criterion.toString();
            unsettledMode_ = mode;
            return;
        }
    }
    const jet::Criterion ready = parsed(criterion);
    settle();
    if (!fromAnEnd && place_ == Place::Nowhere && nextRow(-1, 1) >= 0) mkl::throwError(err::NoCurrentRecord);
    const qsizetype found = searchFrom(mode, ready);
    noMatch_ = found < 0;
    if (!noMatch_)
        goTo(Place::Row, found);
    else if (afterFailedFind_ == AfterFailedFind::Nowhere && nextRow(-1, 1) >= 0)
        goTo(Place::Nowhere);
}

mkl::Variant ScrollCursor::bookmark() const {
    return bookmarkOf(currentRow());
}

void ScrollCursor::setBookmark(const mkl::Variant& bookmark) {
    BookmarkBytes bytes{};
    const QByteArray given = bookmark.type() == mkl::Variant::Type::Binary ? bookmark.toBinary() : QByteArray();
    if (given.size() != sizeof bytes) mkl::throwError(err::InvalidBookmark);
    std::memcpy(&bytes, given.constData(), sizeof bytes);
    if (bytes.generation != numbered().generation || !hasRow(bytes.row)) mkl::throwError(err::InvalidBookmark);
    if (isLeftOut(bytes.row)) mkl::throwError(err::RecordDeleted);
    goTo(Place::Row, bytes.row);
}

qsizetype ScrollCursor::currentRow() const {
    settle();
    if (place_ != Place::Row) mkl::throwError(err::NoCurrentRecord);
    return row_;
}

void ScrollCursor::goTo(Place place, qsizetype row) const {
    unsettledFind_.clear();
    unsettledBegin_ = false;
    place_ = place;
    row_ = row;
    ++moves_;
    numbered().visited = std::max(numbered().visited, row + 1);
}

mkl::Variant ScrollCursor::bookmarkOf(qsizetype row) const {
    const BookmarkBytes bytes{numbered().generation, row};
    return QByteArray(reinterpret_cast<const char*>(&bytes), sizeof bytes);
}

// The next row in that direction that is not left out, -1 behind the last one.
qsizetype ScrollCursor::nextRow(qsizetype row, int step) const {
    do
        row += step;
    while (row >= 0 && isLeftOut(row));
    return row >= 0 && hasRow(row) ? row : -1;
}

qsizetype ScrollCursor::searchFrom(FindMode mode, const jet::Criterion& criterion) const {
    switch (mode) {
    case FindMode::First: return search(criterion, 0, 1);
    case FindMode::Last: return search(criterion, rowCount() - 1, -1);
    case FindMode::Next:
        if (place_ == Place::Eof) return -1;
        return search(criterion, place_ == Place::Row ? row_ + 1 : 0, 1);
    case FindMode::Previous:
        if (place_ == Place::Bof) return -1;
        return search(criterion, place_ == Place::Row ? row_ - 1 : rowCount() - 1, -1);
    }
    return -1;
}

jet::Criterion ScrollCursor::parsed(QStringView criterion) const {
    return jet::Criterion::parse(criterion, columns().list());
}

// Only another program can have taken the row away that was there when it was asked for.
void ScrollCursor::settle() const {
    if (unsettledFind_.isEmpty()) {
        if (unsettledBegin_) toFirst();
        return;
    }
    const jet::Criterion criterion = parsed(std::exchange(unsettledFind_, {}));
    const qsizetype found = searchFrom(unsettledMode_, criterion);
    if (found < 0)
        goTo(Place::Nowhere);
    else
        goTo(Place::Row, found);
}

} // namespace dao
