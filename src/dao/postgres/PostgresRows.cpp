#include "dao/postgres/PostgresRows.h"

#include "dao/Substitute.h"
#include "dao/postgres/PostgresMarks.h"

#include <QDateTime>
#include <QtEndian>
#include <bit>
#include <cmath>

using namespace Qt::StringLiterals;

namespace dao {

using jet::ColumnType;

namespace {

// The numbers of the server's own types never change.
enum ServerType : Oid {
    Bool = 16,
    Bytea = 17,
    Name = 19,
    Int8 = 20,
    Int2 = 21,
    Int4 = 23,
    Text = 25,
    ObjectId = 26,
    Float4 = 700,
    Float8 = 701,
    UnknownText = 705,
    Bpchar = 1042,
    Varchar = 1043,
    Day = 1082,
    Timestamp = 1114,
    Timestamptz = 1184,
    Numeric = 1700,
};

constexpr qint64 firstJulianDay = 2451545; // 2000-01-01, from which the server counts

template<class T>
T numberAt(const char* bytes) {
    return qFromBigEndian<T>(bytes);
}

// Digits of base 10000, the weight of the first one, sign and decimals.
void appendNumeric(RowStore& rows, const char* bytes) {
    const int digits = numberAt<qint16>(bytes), weight = numberAt<qint16>(bytes + 2);
    const quint16 sign = numberAt<quint16>(bytes + 4);
    const int decimals = numberAt<qint16>(bytes + 6);
    constexpr quint16 negative = 0x4000, positive = 0;
    if (sign != negative && sign != positive) return rows.appendNull();
    QByteArray text(sign == negative ? "-" : "");
    for (int group = 0; group <= std::max(weight, 0) || group < digits; ++group) {
        const int place = weight - group;
        if (place == -1 && !text.contains('.')) text += '.';
        const int value = group < digits ? numberAt<qint16>(bytes + 8 + 2 * group) : 0;
        if (weight < 0 && group == 0) text += "0." + QByteArray(4 * (-weight - 1), '0');
        text += QByteArray::number(value).rightJustified(4, '0');
    }
    bool whole = false;
    const qint64 integer = decimals == 0 ? text.toLongLong(&whole) : 0;
    whole ? rows.appendInteger(integer) : rows.appendReal(text.toDouble());
}

// The digits of a number in front of end, in place of the zeros there.
void writeDigits(char* end, int number) {
    for (; number > 0; number /= 10)
        *--end = static_cast<char>('0' + number % 10);
}

// Days and seconds since 2000-01-01 as a date is stored. Not by way of its number: before 1899-12-30 that counts the
// time of day the other way round.
void appendDate(RowStore& rows, qint64 days, qint64 seconds) {
    const QDate date = QDate::fromJulianDay(firstJulianDay + days);
    const auto second = static_cast<int>(seconds);
    int year = 0, month = 0, day = 0;
    date.getDate(&year, &month, &day);
    if (year < 1 || year > 9999) {
        const QTime time = QTime::fromMSecsSinceStartOfDay(second * 1000);
        const QString text = date.toString(u"yyyy-MM-dd "_s) + time.toString(u"HH:mm:ss"_s);
        return rows.appendText(text.toLatin1());
    }
    char text[] = "0000-00-00 00:00:00";
    writeDigits(text + 4, year);
    writeDigits(text + 7, month);
    writeDigits(text + 10, day);
    writeDigits(text + 13, second / 3600);
    writeDigits(text + 16, second / 60 % 60);
    writeDigits(text + 19, second % 60);
    rows.appendText(QByteArrayView(text, 19));
}

void appendTimestamp(RowStore& rows, qint64 microseconds) {
    constexpr qint64 perSecond = 1'000'000, perDay = 86'400 * perSecond;
    qint64 days = microseconds / perDay, rest = microseconds % perDay;
    if (rest < 0) {
        rest += perDay;
        --days;
    }
    appendDate(rows, days, rest / perSecond);
}

void appendValue(RowStore& rows, Oid type, const char* bytes, int size) {
    switch (type) {
    case Bool: return rows.appendInteger(*bytes ? -1 : 0);
    case Int2: return rows.appendInteger(numberAt<qint16>(bytes));
    case Int4: return rows.appendInteger(numberAt<qint32>(bytes));
    case Int8: return rows.appendInteger(numberAt<qint64>(bytes));
    case ObjectId: return rows.appendInteger(numberAt<quint32>(bytes));
    case Float4: return rows.appendReal(std::bit_cast<float>(numberAt<quint32>(bytes)));
    case Float8: return rows.appendReal(std::bit_cast<double>(numberAt<quint64>(bytes)));
    case Numeric: return appendNumeric(rows, bytes);
    case Day: return appendDate(rows, numberAt<qint32>(bytes), 0);
    case Timestamp:
    case Timestamptz: return appendTimestamp(rows, numberAt<qint64>(bytes));
    case Bytea: return rows.appendBlob({bytes, size});
    case Text:
    case Varchar:
    case Bpchar:
    case Name:
    case UnknownText: return rows.appendText({bytes, size});
    default: throw NotExpressible();
    }
}

} // namespace

void PostgresRows::append(const PGresult& result) {
    const int columns = PQnfields(&result);
    if (types_.empty())
        for (int column = 0; column < columns; ++column)
            types_.push_back(PQftype(&result, column));
    const int count = PQntuples(&result);
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < columns; ++column) {
            const auto at = static_cast<size_t>(column);
            const char* bytes = PQgetvalue(&result, row, column);
            const int size = PQgetlength(&result, row, column);
            if (PQgetisnull(&result, row, column))
                rows_.appendNull();
            else if (at < untyped_.size() && untyped_[at])
                rows_.append(unmarkedValue({bytes, size}));
            else
                appendValue(rows_, types_[at], bytes, size);
        }
        rows_.endRow();
    }
}

bool PostgresRows::givesType(Oid server, ColumnType type) {
    switch (server) {
    case Bool:
    case Int2:
    case Int4:
    case Int8:
        return type == ColumnType::Boolean || type == ColumnType::Int || type == ColumnType::Double ||
               type == ColumnType::Currency;
    case Float4:
    case Float8:
    case Numeric: return type == ColumnType::Double || type == ColumnType::Currency;
    case Day:
    case Timestamp:
    case Timestamptz: return type == ColumnType::Date;
    case Bytea: return type == ColumnType::Binary;
    case Text:
    case Varchar:
    case Bpchar:
    case Name: return type == ColumnType::Text;
    default: return false;
    }
}

} // namespace dao
