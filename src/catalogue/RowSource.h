#pragma once
// Rows on their way from any source into a catalogue.
#include "base/Variant.h"
#include "catalogue/CatalogueTables.h"

#include <span>

namespace mkl {

/// Takes rows, table by table. Tables and columns are positions in catalogueTables(). What it throws stops the source.
class RowSink {
public:
    virtual ~RowSink() = default;

    /// A table of the source that a catalogue does not know, or a column of one that it does.
    virtual void passOverTable(const QString& table) = 0;
    virtual void passOverColumn(const QString& table, const QString& column) = 0;

    /// The rows that follow have these columns; expectedRows is the source's own count, -1 without one.
    virtual void beginTable(int table, const QList<int>& columns, qint64 expectedRows) = 0;
    /// Values have the types of their columns or are Null.
    virtual void row(std::span<const Variant> values) = 0;
    virtual void endTable() = 0;
};

class RowSource {
public:
    virtual ~RowSource() = default;
    /// Hands over every table of the catalogue, or raises an error that says what is wrong with the source.
    virtual void readInto(RowSink& sink) = 0;
};

} // namespace mkl
