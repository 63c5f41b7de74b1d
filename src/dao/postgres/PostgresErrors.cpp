#include "dao/postgres/PostgresErrors.h"

#include "base/Texts.h"
#include "dao/Errors.h"
#include "dao/Substitute.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

struct Mapping {
    QLatin1StringView state; ///< or its beginning; the first one that fits holds
    mkl::Long number;
};

// What our functions on the server raise: "MK001" where they cannot answer, "MKERR" with the number as the text.
constexpr QLatin1StringView beyondState("MK001"), numberState("MKERR");

constexpr Mapping mappings[] = {
    {QLatin1StringView("23505"), err::DuplicateKey},  {QLatin1StringView("23503"), err::RelatedRecords},
    {QLatin1StringView("2200H"), mkl::err::Overflow}, // of a counter
    {QLatin1StringView("22003"), mkl::err::Overflow}, {QLatin1StringView("22012"), mkl::err::DivisionByZero},
    {QLatin1StringView("22001"), err::FieldTooSmall}, {QLatin1StringView("22"), err::ConversionError},
    {QLatin1StringView("42P07"), err::TableExists},   {QLatin1StringView("42710"), err::TableExists},
    {QLatin1StringView("25006"), err::ReadOnly},      {QLatin1StringView("55P03"), err::Locked},
    {QLatin1StringView("40"), err::Locked},           {QLatin1StringView("57014"), err::Interrupted},
    {QLatin1StringView("53100"), err::DiskFull},      {QLatin1StringView("53200"), err::OutOfMemory},
    {QLatin1StringView("54"), err::TooComplex},       {QLatin1StringView("57P"), err::DiskError},
    {QLatin1StringView("08"), err::DiskError},        {QLatin1StringView("58"), err::DiskError},
};

QString fieldOf(const PGresult* result, int field) {
    const char* text = result ? PQresultErrorField(result, field) : nullptr;
    return text ? QString::fromUtf8(text) : QString();
}

[[noreturn]] void raiseNull(const PGresult* result, const PostgresErrorContext& context, const QString& source) {
    const QString table = fieldOf(result, PG_DIAG_TABLE_NAME), column = fieldOf(result, PG_DIAG_COLUMN_NAME);
    const bool isKey = context.isKeyColumn && context.isKeyColumn(table, column);
    mkl::throwError(isKey ? err::NullInKey : err::NullNotAllowed, {column}, source);
}

QString argumentOf(mkl::Long number, const PGresult* result, const QString& name) {
    switch (number) {
    case err::DiskError: return name;
    case err::TableExists: return fieldOf(result, PG_DIAG_TABLE_NAME);
    default: return fieldOf(result, PG_DIAG_COLUMN_NAME);
    }
}

} // namespace

void raiseServerLost(const PostgresErrorContext& context, const QString& source) {
    throw mkl::RunTimeError(err::DiskError, mkl::text(mkl::TextId::ServerLost, {context.name}), source);
}

void raisePostgresError(PGconn* connection, const PGresult* result, const PostgresErrorContext& context) {
    const QString state = fieldOf(result, PG_DIAG_SQLSTATE);
    const QString message = fieldOf(result, PG_DIAG_MESSAGE_PRIMARY);
    const QString source = u"PostgreSQL %1: %2"_s.arg(state, message);
    if (PQstatus(connection) != CONNECTION_OK) raiseServerLost(context, source);
    if (state == beyondState) throw NotExpressible(source);
    if (state == numberState) mkl::throwError(message.toInt(), {}, source);
    if (state == u"23502") raiseNull(result, context, source);
    if (state.startsWith(u"23") && state != u"23505" && state != u"23503")
        mkl::throwError(err::RuleViolated, {fieldOf(result, PG_DIAG_CONSTRAINT_NAME)}, source);
    if (state == u"42501")
        throw mkl::RunTimeError(err::NotPermitted, mkl::text(mkl::TextId::ServerNotPermitted), source);
    const auto fits = [&](const Mapping& mapping) { return state.startsWith(mapping.state); };
    const auto* mapping = std::ranges::find_if(mappings, fits);
    if (mapping != std::end(mappings))
        mkl::throwError(mapping->number, {argumentOf(mapping->number, result, context.name)}, source);
    if (state.startsWith(u"42")) throw NotExpressible(source);
    mkl::throwError(err::InternalError, {state}, source);
}

void raisePostgresConnectionError(PGconn* connection, const PostgresErrorContext& context) {
    const QString message = QString::fromUtf8(connection ? PQerrorMessage(connection) : "");
    raiseServerLost(context, u"PostgreSQL: "_s + message.trimmed());
}

// An unknown column or table, and a result of other types.
bool isOfOldPreparation(const QString& source) {
    constexpr QStringView beginnings[] = {u"PostgreSQL 42703", u"PostgreSQL 42P01", u"PostgreSQL 0A000"};
    return std::ranges::any_of(beginnings, [&](QStringView beginning) { return source.startsWith(beginning); });
}

} // namespace dao
