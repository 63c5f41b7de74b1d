#include "bench/ServerConnection.h"

#include <QtEndian>
#include <stdexcept>
#include <vector>

namespace bench {

ServerConnection::ServerConnection(const QString& url)
    : connection_(PQconnectdb(url.toUtf8().constData()), &PQfinish) {
    if (PQstatus(handle()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(handle()));
    exec("SET search_path = public, mkl");
}

RawResult ServerConnection::checked(PGresult* result) const {
    RawResult owned(result, &PQclear);
    const ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) throw std::runtime_error(PQerrorMessage(handle()));
    return owned;
}

void ServerConnection::exec(const QByteArray& native) const {
    checked(PQexec(handle(), native.constData()));
}

void ServerConnection::prepare(const char* name, const char* native) const {
    checked(PQprepare(handle(), name, native, 0, nullptr));
}

RawResult ServerConnection::run(const char* name, std::span<const int> parameters) const {
    std::vector<quint32> numbers;
    for (const int parameter : parameters)
        numbers.push_back(qToBigEndian(static_cast<quint32>(parameter)));
    std::vector<const char*> values;
    for (const quint32& number : numbers)
        values.push_back(reinterpret_cast<const char*>(&number));
    const std::vector<int> lengths(numbers.size(), 4), formats(numbers.size(), 1);
    return checked(PQexecPrepared(handle(), name, static_cast<int>(values.size()), values.data(), lengths.data(),
                                  formats.data(), 1));
}

int integerAt(const PGresult& result, int row, int column) {
    const char* bytes = PQgetvalue(&result, row, column);
    switch (PQgetlength(&result, row, column)) {
    case 2: return qFromBigEndian<qint16>(bytes);
    case 8: return static_cast<int>(qFromBigEndian<qint64>(bytes));
    default: return qFromBigEndian<qint32>(bytes);
    }
}

QString textAt(const PGresult& result, int row, int column) {
    return QString::fromUtf8(PQgetvalue(&result, row, column), PQgetlength(&result, row, column));
}

int columnOf(const PGresult& result, const char* name) {
    return PQfnumber(&result, QByteArray('"' + QByteArray(name) + '"').constData());
}

} // namespace bench
