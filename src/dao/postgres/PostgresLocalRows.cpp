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
        , lenient_(lenient)
        , tables_(rows.tablesIn(native_)) {
        rows_.memory().prepare(native_, access_); // errors show at once
    }

    bool readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype /*limit*/) override {
        const Loaded loaded(*this);
        rows_.memory().prepared(native_, access_)->read(parameters, rows);
        return true;
    }
    qint64 run(std::span<const StoredValue> parameters) override {
        const Loaded loaded(*this);
        PostgresRowChanges changes(rows_.server_, rows_.memory(), native_, tables_);
        changes.noteBefore();
        const qint64 affected = rows_.memory().prepared(native_, access_)->run(parameters);
        return affected - changes.carryOver(lenient_);
    }
    bool takeStale() override { return false; }

private:
    struct Loaded {
        explicit Loaded(LocalStatement& statement)
            : statement_(statement) {
            for (const jet::Table* table : statement_.tables_)
                statement_.rows_.load(*table);
        }
        ~Loaded() {
            for (const jet::Table* table : statement_.tables_)
                statement_.rows_.empty(*table);
        }
        Q_DISABLE_COPY_MOVE(Loaded)

    private:
        LocalStatement& statement_;
    };

    PostgresLocalRows& rows_;
    QByteArray native_;
    Access access_;
    bool lenient_;
    std::vector<const jet::Table*> tables_;
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

void PostgresLocalRows::load(const jet::Table& table) {
    const jet::Target& there = server_.target();
    const jet::Target& here = target();
    const bool hasKey = !table.primaryKey.isEmpty();
    QByteArrayList read = namesOf(table, there), stored = namesOf(table, here), parameters;
    if (!hasKey) {
        read.append(there.rowIdentity(there.name(table.name)));
        stored.append("_rowid_");
    }
    for (qsizetype i = 1; i <= stored.size(); ++i)
        parameters.append('?' + QByteArray::number(i));
    RowStore rows;
    server_.prepared("SELECT " + read.join(", ") + " FROM " + there.name(table.name), Access::Read)->read({}, rows);
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
}

void PostgresLocalRows::empty(const jet::Table& table) {
    memory().prepared("DELETE FROM " + target().name(table.name), Access::Internal)->run({});
}

} // namespace dao
