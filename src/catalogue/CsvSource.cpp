#include "catalogue/CsvSource.h"

#include "base/DateTime.h"
#include "catalogue/CsvReader.h"
#include "catalogue/NameMatch.h"
#include "catalogue/Refusal.h"

#include <QDir>
#include <QFile>
#include <cmath>
#include <optional>
#include <vector>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// A table of the catalogue under its own name, anything else under its file name.
QString tableOfFile(const QString& baseName) {
    for (const CatalogueTable& table : catalogueTables())
        if (QString(table.name).replace(u'/', u'_').compare(baseName, Qt::CaseInsensitive) == 0) return table.name;
    return baseName;
}

std::optional<qint64> wholeNumber(const QString& text) {
    bool ok = false;
    const qint64 number = text.toLongLong(&ok, 10);
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<Variant> longOf(const QString& text) {
    const auto number = wholeNumber(text);
    if (!number || *number != static_cast<Long>(*number)) return {};
    return Variant(static_cast<Long>(*number));
}

std::optional<Variant> booleanOf(const QString& text) {
    if (text == u"-1") return Variant(true);
    if (text == u"0") return Variant(false);
    return {};
}

std::optional<Variant> doubleOf(const QString& text) {
    double number = 0;
    if (!parseNumber(text, number)) return {};
    return Variant(number);
}

/// Ten-thousandths from "-12.3400"; up to four decimals.
std::optional<Variant> currencyOf(const QString& text) {
    const qsizetype point = text.indexOf(u'.');
    const qsizetype decimals = point < 0 ? 0 : text.size() - point - 1;
    if (decimals > 4 || point == text.size() - 1) return {};
    const auto number = wholeNumber(QString(text).remove(u'.') + QString(4 - decimals, u'0'));
    if (!number) return {};
    return Variant::currency(*number);
}

std::optional<Variant> dateOf(const QString& text) {
    const auto date = dateFromIso(text);
    if (!date) return {};
    return Variant::date(*date);
}

std::optional<Variant> valueOf(const CsvField& field, Variant::Type type) {
    if (field.isNull()) return Variant();
    switch (type) {
    case Variant::Type::Int: return longOf(field.text);
    case Variant::Type::Boolean: return booleanOf(field.text);
    case Variant::Type::Double: return doubleOf(field.text);
    case Variant::Type::Currency: return currencyOf(field.text);
    case Variant::Type::Date: return dateOf(field.text);
    case Variant::Type::Text: return Variant(field.text);
    case Variant::Type::Null:
    case Variant::Type::Binary: break;
    }
    return {};
}

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throwError(3051, {path}, file.errorString());
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) throwError(3051, {path}, file.errorString());
    return bytes;
}

} // namespace

CsvSource::CsvSource(QString folder)
    : folder_(std::move(folder)) {}

void CsvSource::readInto(RowSink& sink) {
    const QDir folder(folder_);
    QStringList files, tables;
    const QStringList names = folder.entryList({u"*.csv"_s}, QDir::Files, QDir::Name);
    for (const QString& file : names) {
        files.append(folder.filePath(file));
        tables.append(tableOfFile(file.chopped(4)));
    }
    if (files.isEmpty()) refuse(refusal::ForeignFile, TextId::ImportNoSource, {folder_});
    const QList<int> positions = matchTables(tables, sink);
    for (int table = 0; table < positions.size(); ++table)
        readTable(table, files[positions[table]], sink);
}

void CsvSource::readTable(int table, const QString& fileName, RowSink& sink) const {
    const CatalogueTable& target = catalogueTables()[table];
    CsvReader reader(fileName, contentsOf(fileName));
    QList<CsvField> fields;
    if (!reader.next(fields)) refuse(refusal::ForeignFile, TextId::ImportEmptyFile, {fileName});
    QStringList names;
    for (const CsvField& field : std::as_const(fields))
        names.append(field.text);
    const QList<ColumnPair> pairs = matchColumns(target, names, sink);

    sink.beginTable(table, targetsOf(pairs), -1);
    std::vector<Variant> values(pairs.size());
    while (reader.next(fields)) {
        if (fields.size() != names.size())
            reader.refuseLine(
                text(TextId::ImportCsvFieldCount, {QString::number(fields.size()), QString::number(names.size())}));
        for (int i = 0; i < pairs.size(); ++i) {
            const CatalogueColumn& column = target.columns[pairs[i].target];
            const CsvField& field = fields[pairs[i].source];
            auto value = valueOf(field, column.type);
            if (!value)
                reader.refuseLine(text(TextId::ImportCsvValue, {columnTitle(target.name, column.name), field.text}));
            values[i] = std::move(*value);
        }
        sink.row(values);
    }
    sink.endTable();
}

} // namespace mkl
