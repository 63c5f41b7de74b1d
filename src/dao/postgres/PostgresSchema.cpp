#include "dao/postgres/PostgresSchema.h"

#include <QMap>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {

using jet::ColumnType;

namespace {

constexpr const char* stampText =
    "SELECT count(*) || ':' || coalesce(sum(a.xmin::text::bigint), 0) || ':' || coalesce(sum(a.attnum), 0) || ':' || "
    "coalesce((SELECT sum(indexrelid::bigint) FROM pg_index i JOIN pg_class k ON k.oid = i.indrelid "
    "WHERE k.relnamespace = 'public'::regnamespace), 0) || ':' || coalesce(sum(c.oid::bigint + "
    "hashtext(c.relname)), 0) "
    "FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid "
    "WHERE c.relnamespace = 'public'::regnamespace AND c.relkind IN ('r', 'p') AND a.attnum > 0";

constexpr const char* columnsText =
    "SELECT c.oid, c.relname, a.attnum, a.attname, t.typname, a.atttypmod, a.attnotnull, "
    "a.attidentity <> '' OR coalesce(pg_get_expr(d.adbin, d.adrelid) LIKE 'nextval(%', false), a.attgenerated <> '' "
    "FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid JOIN pg_type t ON t.oid = a.atttypid "
    "LEFT JOIN pg_attrdef d ON d.adrelid = c.oid AND d.adnum = a.attnum "
    "WHERE c.relnamespace = 'public'::regnamespace AND c.relkind IN ('r', 'p') AND a.attnum > 0 "
    "AND NOT a.attisdropped AND a.attname <> 'mkl_rowid' ORDER BY c.oid, a.attnum";

constexpr const char* indexesText =
    "SELECT i.indrelid, k.relname, i.indisunique, i.indisprimary, array_to_string(i.indkey, ' ') FROM pg_index i "
    "JOIN pg_class k ON k.oid = i.indexrelid WHERE k.relnamespace = 'public'::regnamespace AND i.indpred IS NULL "
    "ORDER BY i.indexrelid";

QString textAt(const PGresult* rows, int row, int column) {
    return QString::fromUtf8(PQgetvalue(rows, row, column));
}

bool flagAt(const PGresult* rows, int row, int column) {
    return *PQgetvalue(rows, row, column) == 't';
}

ColumnType columnTypeOf(const QString& type) {
    static const QHash<QString, ColumnType> types = {
        {u"yesno"_s, ColumnType::Boolean},     {u"int2"_s, ColumnType::Int},       {u"int4"_s, ColumnType::Int},
        {u"int8"_s, ColumnType::Int},          {u"byte"_s, ColumnType::Int},       {u"float4"_s, ColumnType::Double},
        {u"float8"_s, ColumnType::Double},     {u"numeric"_s, ColumnType::Double}, {u"double"_s, ColumnType::Double},
        {u"currency"_s, ColumnType::Currency}, {u"timestamp"_s, ColumnType::Date}, {u"date"_s, ColumnType::Date},
        {u"timestamptz"_s, ColumnType::Date},  {u"datetime"_s, ColumnType::Date},  {u"text"_s, ColumnType::Text},
        {u"varchar"_s, ColumnType::Text},      {u"bpchar"_s, ColumnType::Text},    {u"citext"_s, ColumnType::Text},
        {u"bytea"_s, ColumnType::Binary},      {u"blob"_s, ColumnType::Binary}};
    return types.value(type, ColumnType::Unknown);
}

// The server counts four bytes of its own in the width of a text.
int columnSizeOf(const QString& type, int modifier) {
    constexpr int ownBytes = 4;
    if (type == u"byte") return 1;
    if (type == u"int2") return 2;
    return (type == u"varchar" || type == u"bpchar") && modifier > ownBytes ? modifier - ownBytes : 0;
}

QString visibleName(const QString& table, const QString& index) {
    const bool isPrefixed = index.size() > table.size() && index[table.size()] == u':' &&
                            jet::sameName(QStringView(index).left(table.size()), table);
    return isPrefixed ? index.mid(table.size() + 1) : index;
}

// Programs look for the index of the primary key by the name "PrimaryKey" where no index bears one of its own.
void markPrimaryIndex(jet::Table& table) {
    if (table.primaryKey.isEmpty()) return;
    QList<jet::Index>& indexes = table.indexes;
    const auto coversKey = [&](const jet::Index& index) { return index.columns == table.primaryKey; };
    auto primary = std::ranges::find_if(
        indexes, [&](const jet::Index& index) { return coversKey(index) && jet::sameName(index.name, u"PrimaryKey"); });
    if (primary == indexes.end()) primary = std::ranges::find_if(indexes, coversKey);
    if (primary == indexes.end()) {
        indexes.prepend({u"PrimaryKey"_s, table.primaryKey, true, false});
        primary = indexes.begin();
    }
    primary->primary = true;
    primary->unique = true;
}

/// A table under construction: places of its columns by the server's numbers.
struct TableFacts {
    jet::Table table;
    QHash<int, int> places;
};

using FactsById = QMap<qint64, TableFacts>;

FactsById readColumns(PostgresSession& session, QSet<std::pair<Oid, int>>& untyped) {
    const PostgresResult rows = session.savedScript(columnsText);
    FactsById tables;
    for (int row = 0; row < PQntuples(rows.get()); ++row) {
        TableFacts& facts = tables[textAt(rows.get(), row, 0).toLongLong()];
        facts.table.name = textAt(rows.get(), row, 1);
        facts.places.insert(textAt(rows.get(), row, 2).toInt(), static_cast<int>(facts.table.columns.size()));
        jet::Column column;
        const QString type = textAt(rows.get(), row, 4);
        column.name = textAt(rows.get(), row, 3);
        column.type = columnTypeOf(type);
        column.size = columnSizeOf(type, textAt(rows.get(), row, 5).toInt());
        column.required = flagAt(rows.get(), row, 6);
        column.autoNumber = flagAt(rows.get(), row, 7);
        column.computed = flagAt(rows.get(), row, 8);
        facts.table.columns.append(column);
        if (type == u"variant")
            untyped.insert({textAt(rows.get(), row, 0).toUInt(), textAt(rows.get(), row, 2).toInt()});
    }
    return tables;
}

void readIndexes(PostgresSession& session, FactsById& tables) {
    const PostgresResult rows = session.savedScript(indexesText);
    for (int row = 0; row < PQntuples(rows.get()); ++row) {
        const auto facts = tables.find(textAt(rows.get(), row, 0).toLongLong());
        if (facts == tables.end()) continue;
        jet::Index index;
        index.name = visibleName(facts->table.name, textAt(rows.get(), row, 1));
        index.unique = flagAt(rows.get(), row, 2);
        for (const QString& number : textAt(rows.get(), row, 4).split(u' '))
            index.columns.append(facts->places.value(number.toInt(), -1));
        if (index.columns.contains(-1)) continue; // over expressions
        const bool isPrimary = flagAt(rows.get(), row, 3), hasName = index.name != textAt(rows.get(), row, 1);
        if (isPrimary) facts->table.primaryKey = index.columns;
        if (!isPrimary || hasName) facts->table.indexes.append(index);
    }
}

} // namespace

void PostgresSchema::read(PostgresSession& session) {
    untyped_.clear();
    FactsById tables = readColumns(session, untyped_);
    readIndexes(session, tables);
    const PostgresResult domain = session.savedScript("SELECT to_regtype('mkl.variant')::oid");
    untypedDomain_ = textAt(domain.get(), 0, 0).toUInt();
    tables_.clear();
    byName_.clear();
    for (TableFacts& facts : tables) {
        markPrimaryIndex(facts.table);
        tables_.push_back(facts.table);
        byName_.insert(jet::foldName(facts.table.name), tables_.size() - 1);
    }
}

QByteArray PostgresSchema::stamp(PostgresSession& session) {
    return PQgetvalue(session.savedScript(stampText).get(), 0, 0);
}

const jet::Table* PostgresSchema::findTable(QStringView name) const {
    const auto found = byName_.constFind(jet::foldName(name));
    return found == byName_.cend() ? nullptr : &tables_[*found];
}

QStringList PostgresSchema::tableNames() const {
    QStringList names;
    for (const jet::Table& table : tables_)
        names.append(table.name);
    return names;
}

} // namespace dao
