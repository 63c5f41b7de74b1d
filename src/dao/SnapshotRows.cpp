#include "dao/SnapshotRows.h"

#include "dao/Errors.h"

using namespace Qt::StringLiterals;

namespace dao {

namespace {

// Enough for what is meant for human eyes, little beside the cost of a statement.
constexpr qsizetype rowsReadAtOnce = 256;

} // namespace

SnapshotRows::SnapshotRows(QuerySource source, Reading reading)
    : source_(std::move(source)) {
    if (reading == Reading::AtOnce) {
        readFirst(std::numeric_limits<qsizetype>::max());
    } else if (source_.wholeTable().isEmpty()) {
        readFirst(rowsReadAtOnce);
    } else {
        columns_ = source_.columns(); // a find may be all that is asked, which needs no rows
        isBegun_ = false;
    }
    if (!isRead_) source_.connection()->addPending(this);
}

void SnapshotRows::readFirst(qsizetype limit) {
    const auto result = source_.read(*store_, limit);
    columns_ = result.columns;
    isRead_ = result.complete;
}

void SnapshotRows::requireFirst() {
    if (isBegun_ || isRead_) return;
    readFirst(rowsReadAtOnce);
    isBegun_ = true;
    if (isRead_) source_.connection()->removePending(this);
}

SnapshotRows::SnapshotRows(QuerySource source, std::shared_ptr<const Columns> columns, std::shared_ptr<RowStore> store,
                           std::vector<quint32> places)
    : source_(std::move(source))
    , columns_(std::move(columns))
    , store_(std::move(store))
    , order_(std::move(places))
    , isDerived_(true)
    , isRead_(true) {}

SnapshotRows::~SnapshotRows() {
    if (!isRead_) source_.connection()->removePending(this);
}

bool SnapshotRows::has(qsizetype row) {
    if (row < 0) return false;
    requireFirst();
    if (!isRead_ && row < store_->size()) return true;
    return row < count();
}

qsizetype SnapshotRows::count() {
    if (isDerived_) return static_cast<qsizetype>(order_.size());
    if (!isRead_ && !counted_ && !source_.wholeTable().isEmpty()) {
        RowStore row;
        QuerySource(source_.connection(), source_.plans(), u"SELECT Count(*) FROM ["_s + source_.wholeTable() + u']')
            .read(row);
        counted_ = row.value(0, 0).integer;
    }
    if (!isRead_ && counted_) return *counted_;
    read();
    return store_->size();
}

mkl::Variant SnapshotRows::value(qsizetype row, int column) {
    requireFirst();
    if (!isRead_ && row >= store_->size()) read();
    const qsizetype at = place(row);
    if (at >= store_->size()) mkl::throwError(err::RecordDeleted);
    return store_->decoded(at, column, columns_->at(column).type);
}

void SnapshotRows::read() {
    if (failure_) throw *failure_;
    if (isRead_) return;
    auto all = std::make_shared<RowStore>();
    const auto result = source_.read(*all);
    if (result.columns->count() != columns_->count()) mkl::throwError(err::ObjectInvalid);
    store_ = std::move(all);
    isRead_ = true;
    source_.connection()->removePending(this);
}

void SnapshotRows::readNow() noexcept {
    try {
        read();
    } catch (const mkl::RunTimeError& error) {
        failure_ = error;
    }
}

} // namespace dao
