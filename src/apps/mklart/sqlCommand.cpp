#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "apps/mklart/JsonText.h"
#include "base/DateTime.h"
#include "base/RunTimeError.h"
#include "catalogue/VisibleText.h"
#include "dao/Workspace.h"

#include <algorithm>
#include <vector>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long isActionQuery = 3219;

/// The rows of a query; empty for an action query.
Ref<dao::Recordset> openQuery(dao::Database& database, const QString& statement) {
    try {
        return database.OpenRecordset(statement, dao::dbOpenSnapshot);
    } catch (const RunTimeError& error) {
        if (error.number() != isActionQuery) throw;
    }
    return {};
}

QStringList columnNames(dao::Recordset& rows) {
    QStringList names;
    for (Long i = 0; i < rows.FieldCount(); ++i)
        names.append(rows.Fields(i).Name());
    return names;
}

QString cellText(const Variant& value) {
    if (value.isNull()) return u"Null"_s;
    if (value.type() == Variant::Type::Date) return isoFromDate(value.toDate());
    return visibleText(value.toText());
}

struct TableColumn {
    qsizetype width = 0;
    bool numbers = true; ///< stands at the right
};

std::vector<TableColumn> layOut(dao::Recordset& rows, const QStringList& names) {
    std::vector<TableColumn> columns;
    for (const QString& name : names)
        columns.push_back({visibleText(name).size()});
    for (; !rows.Eof(); rows.MoveNext())
        for (int i = 0; i < names.size(); ++i) {
            const Variant value = rows.value(i);
            columns[i].width = std::max(columns[i].width, cellText(value).size());
            columns[i].numbers = columns[i].numbers && (value.isNull() || value.isNumber());
        }
    return columns;
}

void printCells(const QStringList& cells, const std::vector<TableColumn>& columns) {
    QString line;
    for (int i = 0; i < cells.size(); ++i) {
        if (i > 0) line += u"  "_s;
        const auto& [width, numbers] = columns[i];
        line += numbers ? cells[i].rightJustified(width) : cells[i].leftJustified(width);
    }
    while (line.endsWith(u' '))
        line.chop(1);
    printLine(line);
}

void printTable(dao::Recordset& rows) {
    const QStringList names = columnNames(rows);
    const std::vector<TableColumn> columns = layOut(rows, names);
    QStringList cells;
    for (const QString& name : names)
        cells.append(visibleText(name));
    printCells(cells, columns);
    for (int i = 0; i < cells.size(); ++i)
        cells[i] = QString(columns[i].width, u'-');
    printCells(cells, columns);

    qint64 count = 0;
    if (rows.RecordCount() > 0) rows.MoveFirst();
    for (; !rows.Eof(); rows.MoveNext(), ++count) {
        for (int i = 0; i < cells.size(); ++i)
            cells[i] = cellText(rows.value(i));
        printCells(cells, columns);
    }
    printLine(text(TextId::ToolRows, {QString::number(count)}));
}

void printJson(dao::Recordset& rows) {
    const QStringList names = columnNames(rows);
    QStringList cells;
    for (const QString& name : names)
        cells.append(jsonString(name));
    QString json = u"{\"columns\": ["_s + cells.join(u", "_s) + u"], \"rows\": ["_s;
    for (bool first = true; !rows.Eof(); rows.MoveNext(), first = false) {
        for (int i = 0; i < cells.size(); ++i)
            cells[i] = jsonValue(rows.value(i));
        json += (first ? u"["_s : u", ["_s) + cells.join(u", "_s) + u']';
    }
    printLine(json + u"]}"_s);
}

void runStatement(const QString& file, const QString& statement, bool json) {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file);
    if (const auto rows = openQuery(*database, statement)) return json ? printJson(*rows) : printTable(*rows);
    database->Execute(statement, dao::dbFailOnError);
    const QString affected = QString::number(database->RecordsAffected());
    printLine(json ? u"{\"affected\": %1}"_s.arg(affected) : text(TextId::ToolAffected, {affected}));
}

} // namespace

int runSql(const Invocation& call) {
    const bool json = call.has(u"json"_s);
    try {
        runStatement(call.argument(0), call.argument(1), json);
    } catch (const RunTimeError& error) {
        if (!json) throw;
        printLine(u"{\"error\": {\"number\": %1, \"description\": %2}}"_s.arg(QString::number(error.number()),
                                                                              jsonString(error.description())));
        return Failure;
    }
    return Success;
}

} // namespace mkl
