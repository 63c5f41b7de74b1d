#pragma once
#include "catalogue/NameMatch.h"

namespace mkl {

class MdbFile;
class MdbTable;

/// A catalogue in an .mdb or .accdb file. The library behind it trusts what stands in a file: a damaged one can bring
/// the process down or keep it busy for ever, so this runs in a process of its own.
class MdbSource final : public RowSource {
public:
    explicit MdbSource(QString path);

    void readInto(RowSink& sink) override;

private:
    void readTable(int table, MdbTable& source, RowSink& sink, qint64 rowLimit) const;
    void readRows(MdbTable& source, const CatalogueTable& target, const QList<ColumnPair>& pairs, RowSink& sink,
                  qint64 rowLimit) const;
    [[noreturn]] void refuseDamage(const QString& detail) const;

    QString path_;
};

} // namespace mkl
