#include "dao/postgres/PostgresStatement.h"

#include "dao/Errors.h"
#include "dao/Substitute.h"
#include "dao/postgres/PostgresRows.h"

namespace dao {

namespace {

QByteArray nextName() {
    static quint64 count = 0;
    return "mkl" + QByteArray::number(++count);
}

void bind(PostgresValues& values, const StoredValue& value) {
    const auto add = [&](const char* bytes, qsizetype size, bool binary) {
        values.values.push_back(bytes);
        values.lengths.push_back(static_cast<int>(size));
        values.formats.push_back(binary ? 1 : 0);
    };
    const auto keep = [&](QByteArray text) {
        values.kept.push_back(std::move(text));
        add(values.kept.back().constData(), values.kept.back().size(), false);
    };
    switch (value.kind) {
    case StoredValue::Kind::Null: return add(nullptr, 0, false);
    case StoredValue::Kind::Integer: return keep(QByteArray::number(value.integer));
    case StoredValue::Kind::Real: return keep(QByteArray::number(value.real, 'g', 17));
    case StoredValue::Kind::Text:
        if (value.bytes.contains('\0')) throw NotExpressible();
        return keep(QByteArray(value.bytes.constData(), value.bytes.size()));
    case StoredValue::Kind::Blob: return add(value.bytes.constData(), value.bytes.size(), true);
    }
}

bool beginsWith(const QByteArray& native, std::initializer_list<QByteArrayView> verbs) {
    return std::ranges::any_of(verbs, [&](QByteArrayView verb) { return native.startsWith(verb); });
}

} // namespace

PostgresStatement::PostgresStatement(std::shared_ptr<PostgresSession> session, ChangeCount changes, QByteArray native,
                                     Access access)
    : session_(std::move(session))
    , changes_(std::move(changes))
    , native_(std::move(native))
    , access_(access)
    , name_(nextName()) {
    requireAccess();
    constexpr qsizetype longestText = 200'000; // beyond it the server plans longer than the rows take to read
    if (native_.size() > longestText) throw NotExpressible();
    if (access_ != Access::Define) prepare();
}

PostgresStatement::~PostgresStatement() {
    session_->forget(name_, generation_);
}

void PostgresStatement::requireAccess() const {
    const bool reads = beginsWith(native_, {"SELECT "});
    const bool writes = beginsWith(native_, {"INSERT ", "UPDATE ", "DELETE "});
    const bool defines = beginsWith(native_, {"CREATE TABLE "});
    const bool allowed = access_ == Access::Internal || (access_ == Access::Define && defines) ||
                         (access_ == Access::Write && (reads || writes)) || (access_ == Access::Read && reads);
    if (!allowed) mkl::throwError(err::NotPermitted, {QString::fromUtf8(native_)});
    // Names that engines keep for themselves, so that any catalogue can become a file and any file one on a server.
    const bool isReserved =
        defines && (beginsWith(native_, {"CREATE TABLE \"sqlite_", "CREATE TABLE \"mkl_", "CREATE TABLE \"pg_"}));
    if (isReserved) mkl::throwError(err::TableExists, {QString::fromUtf8(native_.mid(13))});
}

void PostgresStatement::prepare() {
    const PostgresResult described = session_->prepare(name_, native_);
    generation_ = session_->generation();
    types_.clear();
    for (int column = 0; column < PQnfields(described.get()); ++column)
        types_.push_back(PQftype(described.get(), column));
}

void PostgresStatement::requireTypes(const QList<jet::ColumnType>& types) {
    for (size_t column = 0; column < types_.size() && column < static_cast<size_t>(types.size()); ++column)
        if (!PostgresRows::givesType(types_[column], types[static_cast<qsizetype>(column)])) throw NotExpressible();
}

PostgresResult PostgresStatement::execute(std::span<const StoredValue> parameters) {
    constexpr size_t mostParameters = 65535; // of the protocol
    if (parameters.size() > mostParameters) throw NotExpressible();
    PostgresValues values;
    values.kept.reserve(parameters.size());
    for (const StoredValue& value : parameters)
        bind(values, value);
    if (generation_ != session_->generation()) prepare();
    try {
        return session_->run(name_, values);
    } catch (const mkl::RunTimeError& error) {
        const bool mayFollow = error.number() == err::DuplicateKey && native_.startsWith("INSERT INTO ");
        if (!mayFollow || !catchUp()) throw;
        return session_->run(name_, values);
    }
}

// Keys may have been given by hand up to and beyond the next number of the counter.
bool PostgresStatement::catchUp() const {
    const qsizetype begin = native_.indexOf('"'), end = native_.indexOf("\" ", begin + 1);
    if (begin < 0 || end < 0) return false;
    const QByteArray table = native_.mid(begin, end - begin + 1).replace('\'', "''");
    const PostgresResult moved = session_->savedScript("SELECT mkl_catch_up('" + table + "')");
    return *PQgetvalue(moved.get(), 0, 0) == 't';
}

bool PostgresStatement::readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype /*limit*/) {
    const PostgresResult result = execute(parameters);
    if (access_ != Access::Read) ++*changes_;
    PostgresRows::append(*result, rows);
    return true;
}

qint64 PostgresStatement::run(std::span<const StoredValue> parameters) {
    ++*changes_;
    if (access_ == Access::Define) {
        session_->savedScript(native_);
        session_->savedScript("SELECT mkl_add_row_identities()");
        return 0;
    }
    const PostgresResult result = execute(parameters);
    return QByteArray(PQcmdTuples(result.get())).toLongLong();
}

} // namespace dao
