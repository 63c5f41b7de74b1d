#include "dao/postgres/PostgresLocalRows.h"

#include "dao/Errors.h"
#include "dao/postgres/PostgresRowChanges.h"
#include "dao/sqlite/SqliteFile.h"
#include "jet/model/Target.h"

namespace dao {

namespace {

QByteArrayList namesOf(const jet::Table& table, const jet::Target& target) {
    QByteArrayList names;
    for (const jet::Column& column : table.columns)
        names.append(target.name(column.name));
    return names;
}

// No rule of the table holds here: what breaks one is refused by the server.
QByteArray definitionOf(const jet::Table& table, const jet::Target& target) {
    QByteArrayList columns;
    for (const jet::Column& column : table.columns)
        columns.append((target.name(column.name) + ' ' + target.declaredType(column.type)).trimmed());
    return "CREATE TABLE " + target.name(table.name) + " (" + columns.join(", ") + ");";
}

} // namespace

class LocalStatement final : public Statement {
public:
    LocalStatement(PostgresLocalRows& rows, QByteArray native, Access access, bool lenient)
        : rows_(rows)
        , native_(std::move(native))
        , access_(access)
        , lenient_(lenient) {
        for (const jet::Table* table : rows.tablesIn(native_))
            tables_.push_back(*table);
        rows_.memory().prepare(native_, access_); // errors show at once
    }

    bool readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype /*limit*/) override {
        const Loaded loaded(*this);
        rows_.memory().prepared(native_, access_)->read(parameters, rows);
        return true;
    }
    qint64 run(std::span<const StoredValue> parameters) override {
        const Loaded loaded(*this);
        if (stale_) mkl::throwError(err::InternalError, {QString()});
        std::vector<const jet::Table*> tables;
        for (const jet::Table& table : tables_)
            tables.push_back(&table);
        PostgresRowChanges changes(rows_.server_, rows_.memory(), native_, tables);
        changes.noteBefore();
        const qint64 affected = rows_.memory().prepared(native_, access_)->run(parameters);
        return affected - changes.carryOver(lenient_);
    }
    bool takeStale() override { return std::exchange(stale_, false); }

private:
    struct Loaded {
        explicit Loaded(LocalStatement& statement)
            : statement_(statement) {
            for (const jet::Table& table : statement_.tables_)
                if (!statement_.rows_.load(table)) statement_.stale_ = true;
        }
        ~Loaded() {
            for (const jet::Table& table : statement_.tables_)
                statement_.rows_.empty(table);
        }
        Q_DISABLE_COPY_MOVE(Loaded)

    private:
        LocalStatement& statement_;
    };

    PostgresLocalRows& rows_;
    QByteArray native_;
    Access access_;
    bool lenient_;
    bool stale_ = false;
    std::vector<jet::Table> tables_;
};

Connection& PostgresLocalRows::memory() {
    if (memory_) return *memory_;
    memory_ = openSqliteInMemory();
    QByteArray script;
    for (const jet::Table& table : schema_.tables())
        script += definitionOf(table, memory_->target());
    memory_->executeScript(script);
    memory_->refreshSchema();
    return *memory_;
}

const jet::Target& PostgresLocalRows::target() const {
    return const_cast<PostgresLocalRows*>(this)->memory().target();
}

std::shared_ptr<Statement> PostgresLocalRows::prepare(const QByteArray& native, Access access) {
    return std::make_shared<LocalStatement>(*this, native, access, false);
}

std::shared_ptr<Statement> PostgresLocalRows::prepareLenient(const QByteArray& native) {
    return std::make_shared<LocalStatement>(*this, native, Access::Write, true);
}

// A name that stands for something else costs the reading of a table and nothing more.
std::vector<const jet::Table*> PostgresLocalRows::tablesIn(const QByteArray& native) const {
    std::vector<const jet::Table*> tables;
    for (const jet::Table& table : schema_.tables())
        if (native.contains(target().name(table.name))) tables.push_back(&table);
    return tables;
}

void PostgresLocalRows::forgetTables() {
    memory_.reset();
    readers_.clear();
}

std::shared_ptr<Statement> PostgresLocalRows::reader(const jet::Table& table) {
    std::shared_ptr<Statement>& reader = readers_[table.name];
    if (reader) return reader;
    const jet::Target& there = server_.target();
    QByteArrayList names = namesOf(table, there);
    if (table.primaryKey.isEmpty()) names.append(there.rowIdentity(there.name(table.name)));
    return reader = makeReader_("SELECT " + names.join(", ") + " FROM " + there.name(table.name));
}

bool PostgresLocalRows::load(const jet::Table& table) {
    const jet::Target& here = target();
    QByteArrayList stored = namesOf(table, here), parameters;
    if (table.primaryKey.isEmpty()) stored.append("_rowid_");
    for (qsizetype i = 1; i <= stored.size(); ++i)
        parameters.append('?' + QByteArray::number(i));
    RowStore rows;
    const std::shared_ptr<Statement> statement = reader(table);
    statement->read({}, rows);
    const auto insert = memory().prepared("INSERT INTO " + here.name(table.name) + " (" + stored.join(", ") +
                                              ") VALUES (" + parameters.join(", ") + ')',
                                          Access::Internal);
    memory().transaction().atomically([&] {
        QList<StoredValue> values(stored.size());
        for (qsizetype row = 0; row < rows.size(); ++row) {
            for (int column = 0; column < values.size(); ++column)
                values[column] = rows.value(row, column);
            insert->run(values);
        }
    });
    return !statement->takeStale();
}

void PostgresLocalRows::empty(const jet::Table& table) {
    memory().prepared("DELETE FROM " + target().name(table.name), Access::Internal)->run({});
}

} // namespace dao
