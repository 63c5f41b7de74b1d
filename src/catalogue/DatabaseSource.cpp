#include "catalogue/DatabaseSource.h"

#include "catalogue/NameMatch.h"
#include "catalogue/WholeTransaction.h"

#include <optional>
#include <vector>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString bracketed(const QString& name) {
    return u'[' + name + u']';
}

QString orderBy(const CatalogueTable& table) {
    for (const CatalogueColumn& column : table.columns)
        if (column.notNull) return u" ORDER BY "_s + bracketed(column.name);
    return {};
}

QStringList columnNames(dao::Database& database, const QString& table) {
    QStringList names;
    const auto rows = database.OpenRecordset(table, dao::dbOpenTable);
    for (Long i = 0; i < rows->FieldCount(); ++i)
        names.append(rows->Fields(i).Name());
    rows->Close();
    return names;
}

qint64 countOf(dao::Database& database, const QString& table) {
    const auto rows = database.OpenRecordset(u"SELECT Count(*) FROM "_s + bracketed(table), dao::dbOpenForwardOnly);
    return rows->value(0).toLong();
}

/// As long as it lives the transactions of a database on a server see one moment, whoever writes; elsewhere the lock of
/// a transaction does that.
class OneMoment {
public:
    explicit OneMoment(dao::Database& database)
        : database_(database)
        , isOnServer_(dao::DBEngine::isServer(database.Name())) {
        if (isOnServer_) database_.executeNative(u"SET default_transaction_isolation = 'repeatable read'"_s);
    }
    ~OneMoment() {
        try {
            if (isOnServer_) database_.executeNative(u"RESET default_transaction_isolation"_s);
        } catch (const RunTimeError&) {
            // A lost connection begins anew without the setting.
        }
    }
    Q_DISABLE_COPY_MOVE(OneMoment)

    bool isOnServer() const { return isOnServer_; }

private:
    dao::Database& database_;
    bool isOnServer_;
};

} // namespace

DatabaseSource::DatabaseSource(dao::Workspace& workspace, dao::Database& database)
    : workspace_(workspace)
    , database_(database) {}

void DatabaseSource::readInto(RowSink& sink) {
    // A file that may only be read takes no lock; nothing is ever committed here.
    const OneMoment moment(database_);
    std::optional<WholeTransaction> reading;
    if (database_.Updatable() || moment.isOnServer()) reading.emplace(workspace_);
    const QStringList names = database_.tableNames();
    const QList<int> positions = matchTables(names, sink);
    for (int table = 0; table < positions.size(); ++table)
        readTable(table, names[positions[table]], sink);
}

void DatabaseSource::readTable(int table, const QString& name, RowSink& sink) const {
    const CatalogueTable& target = catalogueTables()[table];
    const QStringList names = columnNames(database_, name);
    const QList<ColumnPair> pairs = matchColumns(target, names, sink);
    QStringList selected;
    for (const ColumnPair& pair : pairs)
        selected.append(bracketed(names[pair.source]));

    sink.beginTable(table, targetsOf(pairs), countOf(database_, name));
    const auto rows = database_.OpenRecordset(
        u"SELECT %1 FROM %2%3"_s.arg(selected.join(u", "_s), bracketed(name), orderBy(target)), dao::dbOpenForwardOnly);
    std::vector<Variant> values(pairs.size());
    for (; !rows->Eof(); rows->MoveNext()) {
        for (int i = 0; i < pairs.size(); ++i)
            values[i] = rows->value(i);
        sink.row(values);
    }
    rows->Close();
    sink.endTable();
}

} // namespace mkl
