#include "dao/Database.h"

#include "dao/CursorFactory.h"
#include "dao/Errors.h"
#include "dao/PlanCache.h"
#include "dao/TableCursor.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

// A source is a table name unless it begins as a statement does.
bool isStatement(QStringView source) {
    static constexpr std::array<QStringView, 6> verbs = {u"SELECT", u"PARAMETERS", u"TRANSFORM",
                                                         u"INSERT", u"UPDATE",     u"DELETE"};
    source = source.trimmed();
    if (source.startsWith(u'(')) return true;
    const auto wordEnd = std::ranges::find_if_not(source, [](QChar c) { return c.isLetter(); });
    const QStringView word = source.first(wordEnd - source.begin());
    return std::ranges::any_of(verbs, [&](QStringView verb) { return word.compare(verb, Qt::CaseInsensitive) == 0; });
}

QStringView withoutBrackets(QStringView name) {
    name = name.trimmed();
    return name.startsWith(u'[') && name.endsWith(u']') ? name.sliced(1, name.size() - 2) : name;
}

// A table's name is no longer; so the texts of most statements need not be looked up.
constexpr qsizetype longestTableName = 64;

bool isOpenType(Long type) {
    return type == 0 || type == dbOpenTable || type == dbOpenDynaset || type == dbOpenSnapshot ||
           type == dbOpenForwardOnly;
}

} // namespace

struct Database::Data {
    QString name;
    std::shared_ptr<Connection> connection;
    std::shared_ptr<PlanCache> plans = std::make_shared<PlanCache>();
    Long recordsAffected = 0;

    Connection& opened() {
        if (!connection->isOpen()) mkl::throwError(err::ObjectInvalid);
        return *connection;
    }
    void refreshSchema();
    const jet::Table& table(const QString& tableName);
    bool isTable(const QString& source);
    std::unique_ptr<Cursor> cursorOf(const QuerySource& source, Long type);
    qint64 execute(const QString& sql, bool strict);
    qint64 run(Translation& translation, const Parameters& parameters, bool strict);
};

void Database::Data::refreshSchema() {
    if (connection->refreshSchema()) plans->clear();
}

const jet::Table& Database::Data::table(const QString& tableName) {
    refreshSchema();
    const jet::Table* found = connection->schema().findTable(withoutBrackets(tableName));
    if (!found) mkl::throwError(err::TableNotFound, {tableName});
    return *found;
}

// A name may begin as a statement does: "Update-Liste".
bool Database::Data::isTable(const QString& source) {
    if (!isStatement(source)) return true;
    return source.size() <= longestTableName && connection->schema().findTable(source.trimmed());
}

std::unique_ptr<Cursor> Database::Data::cursorOf(const QuerySource& source, Long type) {
    if (type == dbOpenTable) mkl::throwError(err::ObjectNotFound, {source.sql()});
    return openCursor(source, type == 0 ? dbOpenDynaset : type);
}

Database::Database(QString name, std::shared_ptr<Connection> connection)
    : d_(std::make_unique<Data>()) {
    d_->name = std::move(name);
    d_->connection = std::move(connection);
}

Database::~Database() = default;

QString Database::Name() const {
    return d_->name;
}

bool Database::Updatable() const {
    return d_->opened().isUpdatable();
}

mkl::Ref<Recordset> Database::OpenRecordset(const QString& source, Long type) {
    d_->opened();
    if (!isOpenType(type)) mkl::throwError(mkl::err::InvalidArgument);
    if (!d_->isTable(source))
        return mkl::makeRef<Recordset>(d_->cursorOf({d_->connection, d_->plans, source}, type), source);
    const bool isOfTable = type == 0 || type == dbOpenTable;
    const jet::Table* const known = isOfTable || !d_->connection->noticesOldTables()
                                        ? nullptr
                                        : d_->connection->schema().findTable(withoutBrackets(source));
    const jet::Table& table = known ? *known : d_->table(source);
    if (isOfTable) return mkl::makeRef<Recordset>(std::make_unique<TableCursor>(d_->connection, table), table.name);
    const auto rows = QuerySource::ofTable(d_->connection, d_->plans, table.name);
    return mkl::makeRef<Recordset>(d_->cursorOf(rows, type), table.name);
}

void Database::Execute(const QString& sql, Long options) {
    Connection& connection = d_->opened();
    d_->recordsAffected = 0;
    if (!connection.noticesOldTables()) d_->refreshSchema();
    const bool strict = (options & dbFailOnError) != 0;
    qint64 affected = 0;
    try {
        affected = d_->execute(sql, strict);
    } catch (const mkl::RunTimeError& error) {
        const bool isOfOldTables = error.number() == err::InternalError && connection.refreshSchema();
        if (!isOfOldTables) throw;
        d_->plans->clear();
        affected = d_->execute(sql, strict);
    }
    d_->recordsAffected = mkl::roundToLong(static_cast<double>(affected));
}

qint64 Database::Data::execute(const QString& sql, bool strict) {
    const jet::Shape shape = jet::shapeOf(sql);
    const auto translation = plans->translation(shape, sql, *connection);
    if (translation->plan.kind == jet::StatementKind::Select) mkl::throwError(err::ExecuteOfSelect);
    connection->requireWritable();
    const Parameters parameters = parameterValues(translation->plan, shape);
    qint64 affected = 0;
    connection->transaction().atomically([&] { affected = run(*translation, parameters, strict); });
    return affected;
}

qint64 Database::Data::run(Translation& translation, const Parameters& parameters, bool strict) {
    const jet::Plan& plan = translation.plan;
    if (plan.kind == jet::StatementKind::MakeTable) {
        QByteArray substituted; // translated while the table is not there yet
        if (Substitute* const other = connection->substitute())
            substituted = translation.compile(other->target()).followUp;
        translation.statement->run({});
        refreshSchema();
        const auto write = [&](const jet::Target&) { return substituted; };
        return prepareOrSubstitute(*connection, plan.followUp, Access::Write, {}, write)->run(parameters);
    }
    auto& statement = strict ? translation.statement : translation.lenientStatement;
    if (!statement)
        statement = prepareLenient(*connection, plan.native, plan.lenient,
                                   [compile = translation.compile](const jet::Target& target) {
                                       const jet::Plan other = compile(target);
                                       return other.lenient.isEmpty() ? other.native : other.lenient;
                                   });
    return statement->run(parameters);
}

void Database::setBusyTimeout(Long milliseconds) {
    if (milliseconds < 0) mkl::throwError(mkl::err::InvalidArgument);
    d_->opened().setBusyTimeout(milliseconds);
}

Long Database::BusyTimeout() const {
    return d_->opened().busyTimeout();
}

Long Database::RecordsAffected() const {
    return d_->recordsAffected;
}

Long Database::LocalNumber() const {
    return d_->opened().localNumber();
}

void Database::setLocalNumber(Long number) {
    Connection& connection = d_->opened();
    connection.requireWritable();
    connection.transaction().atomically([&] { connection.setLocalNumber(number); });
}

bool Database::takeChangedByOthers() {
    return isOpen() && d_->connection->takeChangedByOthers();
}

bool Database::isEncrypted() const {
    return isOpen() && d_->connection->isEncrypted();
}

bool Database::isLost() const {
    return isOpen() && d_->connection->isLost();
}

QStringList Database::tableNames() const {
    d_->opened();
    d_->refreshSchema();
    return d_->connection->tableNames();
}

const jet::Schema& Database::schema() const {
    return d_->opened().schema();
}

void Database::executeNative(const QString& statements) {
    Connection& connection = d_->opened();
    connection.transaction().requireSound();
    connection.readPending();
    connection.executeScript(statements.toUtf8());
    d_->refreshSchema();
}

QList<QStringList> Database::queryNative(const QString& query, int columns) {
    RowStore found;
    d_->opened().prepare(query.toUtf8(), Access::Internal)->read({}, found);
    QList<QStringList> rows;
    for (qsizetype row = 0; row < found.size(); ++row) {
        rows.append(QStringList());
        for (int column = 0; column < columns; ++column)
            rows.last().append(QString::fromUtf8(found.text(row, column).value_or(QByteArrayView())));
    }
    return rows;
}

void Database::createTable(const TableDefinition& table) {
    Connection& connection = d_->opened();
    connection.requireWritable();
    connection.defineTable(tableStatement(connection.target(), table));
    d_->refreshSchema();
}

void Database::createIndexes(const TableDefinition& table) {
    executeNative(QString::fromUtf8(indexStatements(d_->opened().target(), table)));
}

void Database::createDeletionRule(const DeletionRule& rule) {
    executeNative(QString::fromUtf8(ruleStatement(d_->opened().target(), rule)));
}

RowWriter Database::appendRows(const QString& table, const QStringList& columns) {
    d_->opened();
    return {d_->connection, d_->table(table), columns};
}

void Database::Close() {
    d_->opened();
    d_->plans->clear();
    d_->connection->close();
}

bool Database::isOpen() const {
    return d_->connection->isOpen();
}

const PlanCache& Database::planCache() const {
    return *d_->plans;
}

const std::shared_ptr<PlanCache>& Database::sharedPlans() const {
    return d_->plans;
}

} // namespace dao
