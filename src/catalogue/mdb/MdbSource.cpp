#include "catalogue/mdb/MdbSource.h"

#include "catalogue/Refusal.h"
#include "catalogue/mdb/MdbFile.h"

namespace mkl {

namespace {

constexpr qint64 rowsPerPage = 256; // the number of a row within its page has one byte

/// A missing table that the file only refers to deserves a message of its own.
void refuseLinked(const QStringList& linked, const QStringList& names) {
    for (const QString& name : linked) {
        const int table = catalogueTableIndex(name);
        if (table >= 0 && !names.contains(name, Qt::CaseInsensitive))
            refuse(refusal::Missing, TextId::ImportLinkedTable, {catalogueTables()[table].name});
    }
}

} // namespace

MdbSource::MdbSource(QString path)
    : path_(std::move(path)) {}

void MdbSource::refuseDamage(const QString& detail) const {
    refuse(refusal::Damaged, TextId::ImportDamaged, {path_, detail});
}

void MdbSource::readInto(RowSink& sink) {
    const MdbFile file(path_);
    refuseLinked(file.linkedTables(), file.tableNames());
    const QList<int> positions = matchTables(file.tableNames(), sink);
    for (int table = 0; table < positions.size(); ++table) {
        MdbTable source = file.openTable(positions[table]);
        if (!source.isReadable()) refuseDamage(text(TextId::ImportTableHead, {catalogueTables()[table].name}));
        readTable(table, source, sink, file.pages() * rowsPerPage);
    }
}

void MdbSource::readTable(int table, MdbTable& source, RowSink& sink, qint64 rowLimit) const {
    const CatalogueTable& target = catalogueTables()[table];
    const QList<ColumnPair> pairs = matchColumns(target, source.columnNames(), sink);
    for (const ColumnPair& pair : pairs) {
        const CatalogueColumn& column = target.columns[pair.target];
        if (!source.fits(pair.source, column.type))
            refuse(refusal::WrongType, TextId::ImportColumnType, {columnTitle(target.name, column.name)});
    }
    sink.beginTable(table, targetsOf(pairs), source.declaredRows());
    readRows(source, target, pairs, sink, std::min(rowLimit, source.declaredRows()));
    sink.endTable();
}

void MdbSource::readRows(MdbTable& source, const CatalogueTable& target, const QList<ColumnPair>& pairs, RowSink& sink,
                         qint64 rowLimit) const {
    std::vector<Variant> values(pairs.size());
    qint64 rows = 0;
    // One row more than there should be is enough to know that the count is wrong.
    for (; rows <= rowLimit && source.fetch(); ++rows) {
        bool sound = source.isRowSound();
        for (int i = 0; sound && i < pairs.size(); ++i) {
            auto value = source.value(pairs[i].source, target.columns[pairs[i].target].type);
            sound = value.has_value();
            if (sound) values[i] = std::move(*value);
        }
        if (!sound) refuseDamage(text(TextId::ImportRowValue, {target.name, QString::number(rows + 1)}));
        sink.row(values);
    }
    if (rows != source.declaredRows())
        refuseDamage(
            text(TextId::ImportRowCount, {target.name, QString::number(source.declaredRows()), QString::number(rows)}));
}

} // namespace mkl
