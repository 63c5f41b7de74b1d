#include "dao/DynasetCursor.h"

#include "dao/CursorFactory.h"
#include "dao/Errors.h"
#include "dao/StoredRowReader.h"

#include <algorithm>
#include <numeric>

namespace dao {

DynasetCursor::DynasetCursor(std::shared_ptr<DynasetRows> rows, Derivations derivations)
    : ScrollCursor(rows->source().connection(), rows->columns(), AfterFailedFind::Nowhere)
    , rows_(std::move(rows))
    , derivations_(std::move(derivations))
    , buffer_(editColumns(columns().list(), connection().schema())) {
    begin();
}

DynasetCursor::DynasetCursor(const DynasetCursor& original, Clone)
    : ScrollCursor(original.sharedConnection(), original.sharedColumns(), AfterFailedFind::Stays)
    , rows_(original.rows_)
    , derivations_(original.derivations_)
    , buffer_(editColumns(columns().list(), connection().schema())) {}

// Added rows count at once, others when they were visited.
Long DynasetCursor::recordCount() const {
    const qsizetype counted = std::min(rows_->visited, rows_->firstAdded());
    const qsizetype added = rows_->count() - rows_->firstAdded();
    const qsizetype deletedOfAdded = rows_->deletedBefore(rows_->count()) - rows_->deletedBefore(rows_->firstAdded());
    return static_cast<Long>(counted - rows_->deletedBefore(counted) + added - deletedOfAdded);
}

mkl::Variant DynasetCursor::value(int ordinal) const {
    if (buffer_.isActive()) return buffer_.value(ordinal);
    return decode(loadedRow().value(0, ordinal), columns().at(ordinal).type);
}

mkl::Variant DynasetCursor::lastModified() const {
    if (lastModified_ < 0) mkl::throwError(err::NoCurrentRecord);
    return bookmarkOf(lastModified_);
}

std::unique_ptr<Cursor> DynasetCursor::clone() const {
    return std::unique_ptr<Cursor>(new DynasetCursor(*this, Clone()));
}

std::unique_ptr<Cursor> DynasetCursor::derive(const QString& filter, const QString& sort, Long type) {
    const Long derivedAs = derivedType(type, dbOpenDynaset);
    const Derivation derivation{filter, sort};
    const CopiedRows now = copyOf(*rows_);
    QList<qsizetype> places(now.numbers.size());
    std::iota(places.begin(), places.end(), 0);
    StoredRowReader reader(*now.values, columns());
    places = chosenRows(derivation, columns(), reader, std::move(places));
    const Derivations derivations = derivations_ + Derivations{derivation};
    if (derivedAs != dbOpenDynaset) {
        auto rows = std::make_shared<SnapshotRows>(rows_->source(), sharedColumns(), now.values,
                                                   std::vector<quint32>(places.cbegin(), places.cend()));
        return cursorOver(std::move(rows), derivedAs, derivations);
    }
    for (qsizetype& place : places)
        place = now.numbers[place];
    return std::make_unique<DynasetCursor>(std::make_shared<DynasetRows>(*rows_, places), derivations);
}

void DynasetCursor::requery() {
    auto rows = dynasetRows(rows_->source());
    if (!rows || rows->columns()->count() != columns().count()) mkl::throwError(err::ObjectInvalid);
    DynasetCursor anew(std::move(rows));
    for (const Derivation& derivation : derivations_) {
        const auto derived = anew.derive(derivation.filter, derivation.sort, dbOpenDynaset);
        anew.rows_ = static_cast<DynasetCursor&>(*derived).rows_;
    }
    rows_ = anew.rows_;
    lastModified_ = -1;
    begin();
}

void DynasetCursor::edit() {
    if (connection().isReadOnly()) mkl::throwError(err::ReadOnly);
    buffer_.clear();
    const quint64 period = connection().exclusivePeriod();
    if (period == 0 || loadedIn_ != period) isLoaded_ = false; // as it is now
    buffer_.beginEdit(loadedRow());
    editedIn_ = period;
    editStamp_ = connection().changeStamp();
}

// Then the row is still as Edit has found it.
bool DynasetCursor::nobodyElseWroteSinceEdit() const {
    return editedIn_ != 0 && editedIn_ == connection().exclusivePeriod() && editStamp_ == connection().changeStamp();
}

void DynasetCursor::addNew() {
    buffer_.clear();
    const int source = rows_->plan().deleteSource;
    const RowEditor& editor = sourceAt(source).editor;
    ColumnValues initial;
    unseen_.clear();
    for (const ColumnValue& value : editor.initialValues()) {
        const QString& name = editor.table().columns[value.column].name;
        int ordinal = 0;
        while (ordinal < columns().count() &&
               (columns().at(ordinal).source != source || columns().at(ordinal).sourceColumn != name))
            ++ordinal;
        if (ordinal < columns().count())
            initial.append({ordinal, value.value});
        else
            unseen_.append(value);
    }
    buffer_.beginAdd(initial);
}

void DynasetCursor::setValue(int ordinal, const mkl::Variant& value) {
    const jet::OutputColumn& column = columns().at(ordinal);
    if (buffer_.isActive() && column.source >= 0) {
        const bool elsewhere = editMode() == EditMode::Add ? column.source != rows_->plan().deleteSource
                                                           : rows_->isAbsent(currentRow(), column.source);
        if (elsewhere) mkl::throwError(err::FieldNotUpdatable, {column.name});
    }
    buffer_.set(ordinal, value);
}

void DynasetCursor::update() {
    switch (editMode()) {
    case EditMode::None: mkl::throwError(err::UpdateWithoutEdit);
    case EditMode::InProgress: storeEdit(); break;
    case EditMode::Add: storeAdd(); break;
    }
    buffer_.clear();
}

void DynasetCursor::cancelUpdate() {
    if (!buffer_.isActive()) mkl::throwError(err::UpdateWithoutEdit);
    buffer_.clear();
}

void DynasetCursor::remove() {
    const qsizetype row = currentRow();
    if (rows_->isDeleted(row)) mkl::throwError(err::RecordDeleted);
    const int source = rows_->plan().deleteSource;
    const quint64 stamp = connection().changeStamp();
    sourceAt(source).editor.remove(rows_->key(row, source));
    searchCopy_.keepThroughRemoval(connection(), stamp);
    rows_->markDeleted(row);
    isLoaded_ = false;
}

qsizetype DynasetCursor::search(const jet::Criterion& criterion, qsizetype first, int step) const {
    if (const CopiedRows* copy = searchCopy_.of(*rows_)) return searchIn(*copy, criterion, first, step);
    RowStore values;
    StoredRowReader reader(values, columns());
    reader.moveTo(0);
    for (qsizetype row = first; row >= 0 && row < rows_->count(); row += step)
        if (!rows_->isDeleted(row) && rows_->read(row, values) && criterion.holds(reader)) return row;
    return -1;
}

qsizetype DynasetCursor::searchIn(const CopiedRows& copy, const jet::Criterion& criterion, qsizetype first,
                                  int step) const {
    StoredRowReader reader(*copy.values, columns());
    qsizetype at = std::ranges::lower_bound(copy.numbers, first) - copy.numbers.begin();
    if (step < 0 && (at == copy.numbers.size() || copy.numbers[at] > first)) --at;
    for (; at >= 0 && at < copy.numbers.size(); at += step) {
        if (rows_->isDeleted(copy.numbers[at])) continue;
        reader.moveTo(at);
        if (criterion.holds(reader)) return copy.numbers[at];
    }
    return -1;
}

const RowStore& DynasetCursor::loadedRow() const {
    const qsizetype row = currentRow();
    const quint64 stamp = connection().changeStamp();
    if (isLoaded_ && loadedAfter_ == moves() && changeStamp_ == stamp) return row_;
    isLoaded_ = false;
    if (rows_->isDeleted(row) || !rows_->read(row, row_)) mkl::throwError(err::RecordDeleted);
    isLoaded_ = true;
    loadedAfter_ = moves();
    changeStamp_ = stamp;
    loadedIn_ = connection().exclusivePeriod();
    return row_;
}

const DynasetCursor::Source& DynasetCursor::sourceAt(int source) const {
    const auto at = static_cast<size_t>(source);
    if (sources_.size() <= at) sources_.resize(at + 1);
    if (std::optional<Source>& known = sources_[at]; !known) {
        const QString& name = rows_->plan().sources[source].table;
        const jet::Table* table = connection().schema().findTable(name);
        if (!table) mkl::throwError(err::TableNotFound, {name});
        QList<int> ordinals;
        for (const jet::OutputColumn& column : columns().list())
            ordinals.append(column.source == source ? table->columnIndex(column.sourceColumn) : -1);
        known.emplace(Source{{sharedConnection(), *table}, ordinals});
    }
    return *sources_[at];
}

ColumnValues DynasetCursor::ofSource(const Source& source, const ColumnValues& values) {
    ColumnValues result;
    for (const ColumnValue& value : values)
        if (const int column = source.columns[value.column]; column >= 0) result.append({column, value.value});
    return result;
}

// Only the tables of columns that were set are touched, all of them or none.
void DynasetCursor::storeEdit() {
    const qsizetype row = currentRow();
    const ColumnValues changes = buffer_.changes();
    std::vector<std::pair<int, ColumnValues>> changesBySource;
    for (int source = 0; source < rows_->plan().sources.size(); ++source)
        if (ColumnValues own = ofSource(sourceAt(source), changes); !own.isEmpty())
            changesBySource.emplace_back(source, std::move(own));
    connection().requireWritable();
    std::vector<std::pair<int, RowKey>> newKeys;
    const auto store = [&] {
        const bool isUnchanged = nobodyElseWroteSinceEdit();
        const ColumnValues before = isUnchanged ? ColumnValues() : buffer_.before();
        for (const auto& [source, own] : changesBySource) {
            const Source& target = sourceAt(source);
            const RowKey key = rows_->key(row, source);
            RowKey newKey =
                target.editor.update(key, own, isUnchanged ? std::nullopt : std::optional(ofSource(target, before)));
            if (newKey != key) newKeys.emplace_back(source, std::move(newKey));
        }
    };
    if (changesBySource.size() == 1)
        store(); // is done as a whole by itself
    else
        connection().transaction().atomically(store);
    for (const auto& [source, key] : newKeys)
        rows_->setKey(row, source, key);
    isLoaded_ = false;
    lastModified_ = row;
}

void DynasetCursor::storeAdd() {
    const int source = rows_->plan().deleteSource;
    const ColumnValues values = unseen_ + ofSource(sourceAt(source), buffer_.changes());
    lastModified_ = rows_->append(sourceAt(source).editor.insert(values));
}

} // namespace dao
