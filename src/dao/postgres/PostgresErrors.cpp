#include "dao/postgres/PostgresErrors.h"

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
    {QLatin1StringView("42501"), err::NotPermitted},  {QLatin1StringView("42P07"), err::TableExists},
    {QLatin1StringView("42710"), err::TableExists},   {QLatin1StringView("25006"), err::ReadOnly},
    {QLatin1StringView("55P03"), err::Locked},        {QLatin1StringView("40"), err::Locked},
    {QLatin1StringView("57014"), err::Interrupted},   {QLatin1StringView("53100"), err::DiskFull},
    {QLatin1StringView("53200"), err::OutOfMemory},   {QLatin1StringView("54"), err::TooComplex},
    {QLatin1StringView("57P"), err::DiskError},       {QLatin1StringView("08"), err::DiskError},
    {QLatin1StringView("58"), err::DiskError},
};

QString fieldOf(const PGresult* result, int field) {
    const char* text = result ? PQresultErrorField(result, field) : nullptr;
    return text ? QString::fromUtf8(text) : QString();
}

// The server names the column of a key by itself alone.
[[noreturn]] void raiseNull(PGconn* connection, const PGresult* result, const QString& source) {
    const QByteArray table = fieldOf(result, PG_DIAG_TABLE_NAME).toUtf8();
    const QByteArray column = fieldOf(result, PG_DIAG_COLUMN_NAME).toUtf8();
    Q_UNUSED(connection);
    Q_UNUSED(table);
    mkl::throwError(err::NullNotAllowed, {QString::fromUtf8(column)}, source);
}

QString argumentOf(mkl::Long number, const PGresult* result, const QString& name) {
    switch (number) {
    case err::DiskError: return name;
    case err::TableExists: return fieldOf(result, PG_DIAG_TABLE_NAME);
    default: return fieldOf(result, PG_DIAG_COLUMN_NAME);
    }
}

} // namespace

void raisePostgresError(PGconn* connection, const PGresult* result, const QString& name) {
    const QString state = fieldOf(result, PG_DIAG_SQLSTATE);
    const QString message = fieldOf(result, PG_DIAG_MESSAGE_PRIMARY);
    const QString source = u"PostgreSQL %1: %2"_s.arg(state, message);
    if (PQstatus(connection) != CONNECTION_OK) mkl::throwError(err::DiskError, {name}, source);
    if (state == beyondState) throw NotExpressible(source);
    if (state == numberState) mkl::throwError(message.toInt(), {}, source);
    if (state == u"23502") raiseNull(connection, result, source);
    if (state.startsWith(u"23") && state != u"23505" && state != u"23503")
        mkl::throwError(err::RuleViolated, {fieldOf(result, PG_DIAG_CONSTRAINT_NAME)}, source);
    const auto fits = [&](const Mapping& mapping) { return state.startsWith(mapping.state); };
    const auto* mapping = std::ranges::find_if(mappings, fits);
    if (mapping != std::end(mappings))
        mkl::throwError(mapping->number, {argumentOf(mapping->number, result, name)}, source);
    if (qEnvironmentVariableIsSet("MKL_PG_TRACE")) qWarning("%s", qPrintable(source));
    if (state.startsWith(u"42")) throw NotExpressible(source);
    mkl::throwError(err::InternalError, {state}, source);
}

void raisePostgresConnectionError(PGconn* connection, const QString& name) {
    const QString message = QString::fromUtf8(connection ? PQerrorMessage(connection) : "");
    mkl::throwError(err::DiskError, {name}, u"PostgreSQL: "_s + message.trimmed());
}

} // namespace dao
