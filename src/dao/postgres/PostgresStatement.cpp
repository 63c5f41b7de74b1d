#include "dao/postgres/PostgresStatement.h"

#include "base/Texts.h"
#include "dao/Errors.h"
#include "dao/Substitute.h"
#include "dao/postgres/PostgresMarks.h"
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
    case StoredValue::Kind::Text: return keep(QByteArray(value.bytes.constData(), value.bytes.size()));
    case StoredValue::Kind::Blob: return add(value.bytes.constData(), value.bytes.size(), true);
    }
}

bool beginsWith(const QByteArray& native, std::initializer_list<QByteArrayView> verbs) {
    return std::ranges::any_of(verbs, [&](QByteArrayView verb) { return native.startsWith(verb); });
}

// The client takes no description of more than about 7,500 of them and gives the connection up. They are numbered
// without gaps.
bool hasTooManyParameters(const QByteArray& native) {
    return native.contains("$7400");
}

} // namespace

PostgresStatement::PostgresStatement(std::shared_ptr<PostgresSession> session, const PostgresSchema& schema,
                                     ChangeCount changes, QByteArray native, Access access, PostgresGuards guards)
    : session_(std::move(session))
    , schema_(schema)
    , changes_(std::move(changes))
    , native_(std::move(native))
    , access_(access)
    , name_(nextName())
    , guards_(std::move(guards)) {
    requireAccess();
    constexpr qsizetype longestText = 200'000; // beyond it the server plans longer than the rows take to read
    if (native_.size() > longestText || hasTooManyParameters(native_)) throw NotExpressible();
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
    untyped_.clear();
    untypedParameters_.clear();
    for (int column = 0; column < PQnfields(described.get()); ++column) {
        types_.push_back(PQftype(described.get(), column));
        untyped_.push_back(schema_.isUntyped(PQftable(described.get(), column), PQftablecol(described.get(), column)));
    }
    for (int number = 0; number < PQnparams(described.get()); ++number)
        untypedParameters_.push_back(PQparamtype(described.get(), number) == schema_.untypedDomain());
}

void PostgresStatement::requireTypes(const QList<jet::ColumnType>& types) {
    for (size_t column = 0; column < types_.size() && column < static_cast<size_t>(types.size()); ++column)
        if (!PostgresRows::givesType(types_[column], types[static_cast<qsizetype>(column)])) throw NotExpressible();
}

// The server has no such texts: it cannot keep one, and our own functions answer what is asked about one.
void PostgresStatement::raiseNullCharacter() const {
    if (access_ == Access::Read) throw NotExpressible();
    throw mkl::RunTimeError(err::ConversionError, mkl::text(mkl::TextId::NullCharacter));
}

PostgresValues PostgresStatement::bound(std::span<const StoredValue> parameters) const {
    PostgresValues values;
    values.kept.reserve(parameters.size());
    for (const StoredValue& value : parameters) {
        const size_t number = values.values.size();
        const bool isUntyped = number < untypedParameters_.size() && untypedParameters_[number];
        if (value.kind == StoredValue::Kind::Text && value.bytes.contains('\0')) raiseNullCharacter();
        bind(values, isUntyped ? markedValue(value) : value);
    }
    return values;
}

PostgresResult PostgresStatement::execute(std::span<const StoredValue> parameters, const PostgresRowSink& sink) {
    if (generation_ != session_->connectedGeneration()) prepare();
    const PostgresValues values = bound(parameters);
    try {
        return runPrepared(values, sink);
    } catch (const mkl::RunTimeError& error) {
        if (!isOfOldPreparation(error.source())) throw;
    }
    // What it was prepared for is no more.
    stale_ = true;
    session_->forget(name_, generation_);
    name_ = nextName();
    generation_ = 0;
    try {
        prepare();
        return runPrepared(values, sink);
    } catch (const NotExpressible& error) {
        if (!isOfOldPreparation(error.source())) throw;
        mkl::throwError(err::InternalError, {QString()}, error.source());
    }
}

PostgresResult PostgresStatement::runPrepared(const PostgresValues& values, const PostgresRowSink& sink) {
    PostgresResult result = runOrFollow(values, sink);
    if (result) return result;
    guards_.clear();
    stale_ = true;
    const bool isAction = access_ != Access::Read;
    if (isAction) mkl::throwError(err::InternalError, {QString()});
    return runOrFollow(values, sink);
}

PostgresResult PostgresStatement::runOrFollow(const PostgresValues& values, const PostgresRowSink& sink) {
    try {
        return session_->run({name_, native_}, values, guards_, sink);
    } catch (const mkl::RunTimeError& error) {
        const bool mayFollow = error.number() == err::DuplicateKey && native_.startsWith("INSERT INTO ");
        if (!mayFollow || !catchUp()) throw;
        return session_->run({name_, native_}, values, guards_, sink);
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

// All rows: the server would begin anew for the others, and they go through no second memory.
bool PostgresStatement::readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype /*limit*/) {
    RowStore found;
    RowStore& taken = rows.isEmpty() ? rows : found;
    try {
        PostgresRows reader(taken, untyped_);
        const PostgresResult rest = execute(parameters, [&](const PGresult& some) { reader.append(some); });
        reader.append(*rest);
    } catch (const NotExpressible&) {
        taken.clear(); // others will give them all
        throw;
    }
    if (access_ != Access::Read) ++*changes_;
    for (qsizetype row = 0; row < found.size(); ++row) {
        for (int column = 0; column < static_cast<int>(types_.size()); ++column)
            rows.append(found.value(row, column));
        rows.endRow();
    }
    return true;
}

qint64 PostgresStatement::run(std::span<const StoredValue> parameters) {
    ++*changes_;
    if (access_ == Access::Define) {
        session_->savedScript(native_);
        session_->savedScript("SELECT mkl_complete_tables()");
        return 0;
    }
    const PostgresResult result = execute(parameters, {});
    return QByteArray(PQcmdTuples(result.get())).toLongLong();
}

} // namespace dao
