#include "dao/sqlite/SqliteSchema.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {

using jet::ColumnType;

namespace {

constexpr const char* tablesText =
    "SELECT s.name, l.wr FROM sqlite_schema AS s JOIN pragma_table_list AS l ON l.name = s.name "
    "WHERE l.schema = 'main' AND l.type = 'table' AND s.type = 'table' AND s.name NOT LIKE 'sqlite!_%' ESCAPE '!' "
    "ORDER BY s.rowid";
constexpr const char* columnsText =
    "SELECT name, type, \"notnull\", pk, hidden FROM pragma_table_xinfo(?1) WHERE hidden <> 1 ORDER BY cid";
constexpr const char* indexesText =
    "SELECT name, \"unique\" FROM pragma_index_list(?1) WHERE origin = 'c' AND partial = 0 ORDER BY seq DESC";
constexpr const char* indexColumnsText =
    "SELECT cid, name FROM pragma_index_xinfo(?1) WHERE \"key\" = 1 ORDER BY seqno";

QString textAt(const RowStore& rows, qsizetype row, int column) {
    return QString::fromUtf8(rows.value(row, column).bytes);
}

// Only names with a settled stored form become yes/no, date and Currency; what other programs keep under other names
// is taken as it is stored.
ColumnType columnTypeOf(const QString& declared) {
    const QString type = declared.left(declared.indexOf(u'(')).trimmed().toUpper();
    if (type == u"YESNO"_s) return ColumnType::Boolean;
    if (type == u"DATETIME"_s) return ColumnType::Date;
    if (type == u"CURRENCY"_s) return ColumnType::Currency;
    // The rest by the rules of the engine itself.
    const auto has = [&](const QString& part) { return type.contains(part); };
    if (has(u"INT"_s) || type == u"LONG"_s) return ColumnType::Int;
    if (has(u"CHAR"_s) || has(u"CLOB"_s) || has(u"TEXT"_s)) return ColumnType::Text;
    if (has(u"BLOB"_s)) return ColumnType::Binary;
    if (has(u"REAL"_s) || has(u"FLOA"_s) || has(u"DOUB"_s)) return ColumnType::Double;
    return ColumnType::Unknown;
}

// "TEXT(50)", "VARCHAR(50)": the width. Whole numbers that are shorter than a Long say so by their name.
int columnSizeOf(const QString& declared, ColumnType type) {
    const QString name = declared.left(declared.indexOf(u'(')).trimmed().toUpper();
    if (type == ColumnType::Int) {
        if (name == u"BYTE"_s || name == u"TINYINT"_s) return 1;
        return name == u"SMALLINT"_s || name == u"INT2"_s ? 2 : 0;
    }
    const qsizetype open = declared.indexOf(u'(');
    const qsizetype close = declared.indexOf(u')', open);
    if (type != ColumnType::Text || open < 0 || close < 0) return 0;
    return std::max(0, declared.mid(open + 1, close - open - 1).trimmed().toInt());
}

struct TableFacts {
    jet::Table table;
    QList<int> declaredKey; ///< columns of the primary key, whether or not they tell the rows apart
    bool withoutRowid = false;
};

bool isRowidAlias(const TableFacts& facts, const QString& declaredType) {
    return !facts.withoutRowid && facts.declaredKey.size() == 1 &&
           declaredType.compare(u"INTEGER"_s, Qt::CaseInsensitive) == 0;
}

// A key that may hold Null may hold it several times, so it identifies nothing.
void setIdentity(TableFacts& facts, const RowStore& columns) {
    QList<std::pair<qint64, int>> places;
    bool mayBeNull = false;
    for (int ordinal = 0; ordinal < columns.size(); ++ordinal) {
        const qint64 place = columns.value(ordinal, 3).integer;
        if (place == 0) continue;
        places.append({place, ordinal});
        mayBeNull = mayBeNull || !facts.table.columns[ordinal].required;
    }
    std::ranges::sort(places);
    for (const auto& [place, ordinal] : places)
        facts.declaredKey.append(ordinal);
    const bool isAlias = !places.isEmpty() && isRowidAlias(facts, textAt(columns, facts.declaredKey.first(), 1));
    if (isAlias || facts.withoutRowid || !mayBeNull) facts.table.primaryKey = facts.declaredKey;
}

void readColumns(Connection& connection, TableFacts& facts) {
    RowStore rows;
    const StoredValue table = StoredValue::ofText(facts.table.name.toUtf8());
    connection.prepared(columnsText, Access::Internal)->read({&table, 1}, rows);
    for (qsizetype row = 0; row < rows.size(); ++row) {
        jet::Column column;
        column.name = textAt(rows, row, 0);
        column.type = columnTypeOf(textAt(rows, row, 1));
        column.computed = rows.value(row, 4).integer != 0;
        column.size = columnSizeOf(textAt(rows, row, 1), column.type);
        column.required = rows.value(row, 2).integer != 0;
        facts.table.columns.append(column);
    }
    setIdentity(facts, rows);
}

void markCounter(const SqliteSession& session, jet::Table& table) {
    for (const int ordinal : table.primaryKey) {
        jet::Column& column = table.columns[ordinal];
        int isCounter = 0;
        sqlite3_table_column_metadata(session.database(), "main", table.name.toUtf8().constData(),
                                      column.name.toUtf8().constData(), nullptr, nullptr, nullptr, nullptr, &isCounter);
        column.autoNumber = isCounter != 0;
    }
}

QString visibleName(const QString& table, const QString& index) {
    const bool isPrefixed = index.size() > table.size() && index[table.size()] == u':' &&
                            jet::sameName(QStringView(index).left(table.size()), table);
    return isPrefixed ? index.mid(table.size() + 1) : index;
}

void readIndexes(Connection& connection, TableFacts& facts) {
    RowStore rows;
    const StoredValue table = StoredValue::ofText(facts.table.name.toUtf8());
    connection.prepared(indexesText, Access::Internal)->read({&table, 1}, rows);
    for (qsizetype row = 0; row < rows.size(); ++row) {
        RowStore columns;
        const StoredValue name = rows.value(row, 0);
        connection.prepared(indexColumnsText, Access::Internal)->read({&name, 1}, columns);
        jet::Index index;
        index.name = visibleName(facts.table.name, QString::fromUtf8(name.bytes));
        index.unique = rows.value(row, 1).integer != 0;
        for (qsizetype column = 0; column < columns.size(); ++column)
            index.columns.append(facts.table.columnIndex(textAt(columns, column, 1)));
        const bool overColumnsOnly = !index.columns.contains(-1);
        if (overColumnsOnly) facts.table.indexes.append(index);
    }
}

// Programs look for the index of the primary key by the name "PrimaryKey" where no index bears one of its own.
void markPrimaryIndex(TableFacts& facts) {
    if (facts.declaredKey.isEmpty()) return;
    QList<jet::Index>& indexes = facts.table.indexes;
    const auto coversKey = [&](const jet::Index& index) { return index.columns == facts.declaredKey; };
    const auto isPrimary = [&](const jet::Index& index) {
        return coversKey(index) && jet::sameName(index.name, u"PrimaryKey");
    };
    auto primary = std::ranges::find_if(indexes, isPrimary);
    if (primary == indexes.end()) primary = std::ranges::find_if(indexes, coversKey);
    if (primary == indexes.end()) {
        indexes.prepend({u"PrimaryKey"_s, facts.declaredKey, true, false});
        primary = indexes.begin();
    }
    primary->primary = true;
    primary->unique = true;
}

jet::Table readTable(Connection& connection, const SqliteSession& session, const RowStore& tables, qsizetype row) {
    TableFacts facts;
    facts.table.name = textAt(tables, row, 0);
    facts.withoutRowid = tables.value(row, 1).integer != 0;
    readColumns(connection, facts);
    markCounter(session, facts.table);
    readIndexes(connection, facts);
    markPrimaryIndex(facts);
    return facts.table;
}

} // namespace

void SqliteSchema::read(Connection& connection, const SqliteSession& session) {
    RowStore rows;
    connection.prepared(tablesText, Access::Internal)->read({}, rows);
    tables_.clear();
    byName_.clear();
    for (qsizetype row = 0; row < rows.size(); ++row) {
        tables_.push_back(readTable(connection, session, rows, row));
        byName_.insert(jet::foldName(tables_.back().name), tables_.size() - 1);
    }
}

const jet::Table* SqliteSchema::findTable(QStringView name) const {
    const auto found = byName_.constFind(jet::foldName(name));
    return found == byName_.cend() ? nullptr : &tables_[*found];
}

QStringList SqliteSchema::tableNames() const {
    QStringList names;
    for (const jet::Table& table : tables_)
        names.append(table.name);
    return names;
}

} // namespace dao
