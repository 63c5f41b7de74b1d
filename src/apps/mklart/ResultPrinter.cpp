#include "apps/mklart/ResultPrinter.h"

#include "apps/mklart/Console.h"
#include "apps/mklart/JsonText.h"
#include "base/Texts.h"
#include "catalogue/VisibleText.h"

#include <QList>
#include <algorithm>
#include <array>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString cellText(const Variant& value) {
    if (value.isNull()) return u"Null"_s;
    if (value.type() == Variant::Type::Date) return dateText(value.toDate());
    return visibleText(value.toText());
}

struct TableColumn {
    qsizetype width = 0;
    bool numbers = true; ///< stands at the right
};

std::vector<TableColumn> layOut(const QueryResult& result, const QStringList& names) {
    std::vector<TableColumn> columns;
    for (const QString& name : names)
        columns.push_back({displayWidth(name)});
    result.forEachRow([&](const dao::Recordset& row) {
        for (int i = 0; i < names.size(); ++i) {
            const Variant value = row.value(i);
            columns[i].width = std::max(columns[i].width, displayWidth(cellText(value)));
            columns[i].numbers = columns[i].numbers && (value.isNull() || value.isNumber());
        }
    });
    return columns;
}

void printCells(const QStringList& cells, const std::vector<TableColumn>& columns) {
    QString line;
    for (int i = 0; i < cells.size(); ++i) {
        if (i > 0) line += u"  "_s;
        const QString blanks(columns[i].width - displayWidth(cells[i]), u' ');
        line += columns[i].numbers ? blanks + cells[i] : cells[i] + blanks;
    }
    while (line.endsWith(u' '))
        line.chop(1);
    printLine(line);
}

// The scripts whose characters are twice as wide as a Latin letter.
bool isWide(char32_t c) {
    struct Range {
        char32_t first, last;
    };
    static constexpr std::array<Range, 9> wide = {{{0x1100, 0x115F},
                                                   {0x2E80, 0x303E},
                                                   {0x3041, 0xA4CF},
                                                   {0xAC00, 0xD7A3},
                                                   {0xF900, 0xFAFF},
                                                   {0xFE30, 0xFE6F},
                                                   {0xFF00, 0xFF60},
                                                   {0x1F300, 0x1F9FF},
                                                   {0x20000, 0x3FFFD}}};
    return std::ranges::any_of(wide, [c](const Range& range) { return range.first <= c && c <= range.last; });
}

bool isMark(char32_t c) {
    const auto category = QChar::category(c);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
}

} // namespace

qsizetype displayWidth(QStringView text) {
    qsizetype width = 0;
    for (const char32_t c : text.toUcs4())
        width += isMark(c) ? 0 : isWide(c) ? 2 : 1;
    return width;
}

void printTable(const QueryResult& result) {
    QStringList cells;
    for (const QString& name : result.columnNames())
        cells.append(visibleText(name));
    const std::vector<TableColumn> columns = layOut(result, cells);
    printCells(cells, columns);
    for (int i = 0; i < cells.size(); ++i)
        cells[i] = QString(columns[i].width, u'-');
    printCells(cells, columns);

    qint64 count = 0;
    result.forEachRow([&](const dao::Recordset& row) {
        for (int i = 0; i < cells.size(); ++i)
            cells[i] = cellText(row.value(i));
        printCells(cells, columns);
        ++count;
    });
    printLine(text(TextId::ToolRows, {QString::number(count)}));
}

void printJson(const QueryResult& result) {
    QStringList cells;
    for (const QString& name : result.columnNames())
        cells.append(jsonString(name));
    print(u"{\"columns\": ["_s + cells.join(u", "_s) + u"], \"rows\": ["_s);
    bool first = true;
    result.forEachRow([&](const dao::Recordset& row) {
        for (int i = 0; i < cells.size(); ++i)
            cells[i] = jsonValue(row.value(i));
        print((first ? u"["_s : u", ["_s) + cells.join(u", "_s) + u']');
        first = false;
    });
    printLine(u"]}"_s);
}

} // namespace mkl
