#pragma once
#include "catalogue/CatalogueImport.h"
#include "catalogue/RowSource.h"
#include "dao/Database.h"

#include <optional>
#include <vector>

namespace mkl {

/// Stores the rows of a source in a catalogue and keeps the report. The caller holds the transaction.
class ImportWriter final : public RowSink {
public:
    ImportWriter(dao::Database& database, const ImportOptions& options);

    void passOverTable(const QString& table) override;
    void passOverColumn(const QString& table, const QString& column) override;
    void beginTable(int table, const QList<int>& columns, qint64 expectedRows) override;
    void row(std::span<const Variant> values) override; ///< 3058 for a row without key, 3059 where it was cancelled
    void endTable() override;                           ///< 3022 for a doubled key

    const ImportReport& report() const { return report_; }

private:
    void storeBlock();
    void showProgress() const;

    dao::Database& database_;
    const ImportOptions& options_;
    ImportReport report_;

    // Of the table at hand:
    std::optional<dao::RowWriter> writer_;
    std::vector<Variant> block_; ///< rows that wait for a block to be full, one behind the other
    qint64 expectedRows_ = -1;
    int keyPosition_ = -1;   ///< among the values of a row; -1 where the table has no key
    std::vector<Long> keys_; ///< compared at the end: the index that would refuse them is made after the rows
};

} // namespace mkl
