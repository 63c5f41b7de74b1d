#include "catalogue/ImportWriter.h"

#include "catalogue/Refusal.h"

#include <algorithm>

namespace mkl {

namespace {
constexpr qint64 progressStep = 2048;
constexpr qint64 rowsPerBlock = 16;
} // namespace

ImportWriter::ImportWriter(dao::Database& database, const ImportOptions& options)
    : database_(database)
    , options_(options) {}

void ImportWriter::passOverTable(const QString& table) {
    report_.passedOverTables.append(table);
}

void ImportWriter::passOverColumn(const QString& table, const QString& column) {
    report_.passedOverColumns.append(columnTitle(table, column));
}

void ImportWriter::beginTable(int table, const QList<int>& columns, qint64 expectedRows) {
    const CatalogueTable& target = catalogueTables()[table];
    QStringList names;
    keyPosition_ = -1;
    for (int i = 0; i < columns.size(); ++i) {
        const CatalogueColumn& column = target.columns[columns[i]];
        names.append(column.name);
        if (column.notNull) keyPosition_ = i;
    }
    writer_.emplace(database_.appendRows(target.name, names));
    expectedRows_ = expectedRows;
    keys_.clear();
    report_.rows.append({target.name, 0});
    showProgress();
}

void ImportWriter::row(std::span<const Variant> values) {
    ImportReport::TableRows& counted = report_.rows.last();
    if (keyPosition_ >= 0) {
        const Variant& key = values[keyPosition_];
        if (key.isNull()) refuse(refusal::NullKey, TextId::ImportNullKey, {counted.table});
        keys_.push_back(key.toLong());
    }
    block_.insert(block_.end(), values.begin(), values.end());
    ++counted.rows;
    if (counted.rows % rowsPerBlock == 0) storeBlock();
    if (counted.rows % progressStep == 0) showProgress();
}

void ImportWriter::storeBlock() {
    if (!block_.empty()) writer_->appendBlock(block_);
    block_.clear();
}

void ImportWriter::endTable() {
    storeBlock();
    std::ranges::sort(keys_);
    const auto doubled = std::ranges::adjacent_find(keys_);
    if (doubled != keys_.end())
        refuse(refusal::DoubledKey, TextId::ImportDoubledKey, {report_.rows.last().table, QString::number(*doubled)});
    writer_.reset();
    showProgress();
}

void ImportWriter::showProgress() const {
    const ImportReport::TableRows& counted = report_.rows.last();
    if (options_.progress && !options_.progress(counted.table, counted.rows, expectedRows_))
        throwError(refusal::Cancelled);
}

} // namespace mkl
