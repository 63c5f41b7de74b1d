#pragma once
#include "catalogue/RowSource.h"

namespace mkl {

class CsvReader;
struct CsvField;

/// A folder with one CSV file per table: TABLE.csv with "/" written as "_", columns named in the first line.
class CsvSource final : public RowSource {
public:
    explicit CsvSource(QString folder);

    void readInto(RowSink& sink) override;

private:
    void readTable(int table, const QString& fileName, RowSink& sink) const;

    QString folder_;
};

} // namespace mkl
