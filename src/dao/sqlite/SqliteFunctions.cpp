#include "dao/sqlite/SqliteFunctions.h"

#include "dao/Constants.h"
#include "dao/StoredValue.h"
#include "dao/sqlite/SqliteLike.h"
#include "jet/functions/Aggregates.h"
#include "jet/functions/Collation.h"
#include "jet/functions/Functions.h"
#include "jet/functions/Operators.h"
#include "jet/functions/StoreConversions.h"

#include <QVarLengthArray>
#include <new>
#include <string_view>

namespace dao {

using jet::ColumnType;
using mkl::Variant;

namespace {

using Arguments = QVarLengthArray<Variant, 8>;

// Subtypes of the engine's values: which of our types it cannot tell by itself. 0 says nothing.
constexpr unsigned int subtypeOf(ColumnType type) {
    switch (type) {
    case ColumnType::Boolean: return 'B';
    case ColumnType::Currency: return 'C';
    case ColumnType::Date: return 'D';
    default: return 0;
    }
}

ColumnType typeOfSubtype(unsigned int subtype) {
    for (const ColumnType type : {ColumnType::Boolean, ColumnType::Currency, ColumnType::Date})
        if (subtype == subtypeOf(type)) return type;
    return ColumnType::Text; // not unknown: a packed value is unpacked by its own function only
}

ColumnType columnTypeOf(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Boolean: return ColumnType::Boolean;
    case Variant::Type::Currency: return ColumnType::Currency;
    case Variant::Type::Date: return ColumnType::Date;
    default: return ColumnType::Unknown;
    }
}

StoredValue storedArgument(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER: return StoredValue::ofInteger(sqlite3_value_int64(value));
    case SQLITE_FLOAT: return StoredValue::ofReal(sqlite3_value_double(value));
    case SQLITE_TEXT: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return StoredValue::ofText(QByteArray::fromRawData(text, sqlite3_value_bytes(value)));
    }
    case SQLITE_BLOB: {
        const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
        return StoredValue::ofBlob(QByteArray::fromRawData(bytes, sqlite3_value_bytes(value)));
    }
    default: return {};
    }
}

Arguments argumentsOf(int count, sqlite3_value** values) {
    Arguments result;
    result.reserve(count);
    for (int i = 0; i < count; ++i)
        result.append(decode(storedArgument(values[i]), typeOfSubtype(sqlite3_value_subtype(values[i]))));
    return result;
}

void setResult(sqlite3_context* context, const Variant& value) {
    const StoredValue stored = encode(value);
    const auto size = static_cast<sqlite3_uint64>(stored.bytes.size());
    switch (stored.kind) {
    case StoredValue::Kind::Null: return sqlite3_result_null(context);
    case StoredValue::Kind::Integer: sqlite3_result_int64(context, stored.integer); break;
    case StoredValue::Kind::Real: sqlite3_result_double(context, stored.real); break;
    case StoredValue::Kind::Text:
        sqlite3_result_text64(context, stored.bytes.constData(), size, SQLITE_TRANSIENT, SQLITE_UTF8);
        break;
    case StoredValue::Kind::Blob:
        sqlite3_result_blob64(context, stored.bytes.constData(), size, SQLITE_TRANSIENT);
        break;
    }
    sqlite3_result_subtype(context, subtypeOf(columnTypeOf(value)));
}

/// One registered function: what the engine hands back to our callbacks.
struct Registration {
    SqliteSession* session;
    Variant (*function)(std::span<const Variant>);
    const jet::Aggregate* aggregate;
};

// No exception may pass through the engine: an error of ours waits in the session until the statement has failed.
template<class Body>
void guarded(sqlite3_context* context, Body&& body) {
    const auto* registration = static_cast<const Registration*>(sqlite3_user_data(context));
    try {
        body(*registration);
    } catch (const mkl::RunTimeError& error) {
        registration->session->keepFunctionError(error);
        sqlite3_result_error(context, error.what(), -1);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

void callFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&](const Registration& registration) {
        setResult(context, registration.function(argumentsOf(count, values)));
    });
}

void callLike(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&](const Registration& registration) {
        if (!answerLike(context, values)) setResult(context, registration.function(argumentsOf(count, values)));
    });
}

using Callback = void (*)(sqlite3_context*, int, sqlite3_value**);

Callback callbackOf(const jet::Operator& op) {
    return std::string_view(op.nativeName) == "mkl_like" ? &callLike : &callFunction;
}

// The engine gives zeroed memory per group: room for one pointer.
jet::Accumulator** accumulatorOf(sqlite3_context* context, bool make) {
    const int size = make ? static_cast<int>(sizeof(jet::Accumulator*)) : 0;
    return static_cast<jet::Accumulator**>(sqlite3_aggregate_context(context, size));
}

void stepAggregate(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&](const Registration& registration) {
        jet::Accumulator** accumulator = accumulatorOf(context, true);
        if (!accumulator) throw std::bad_alloc();
        if (!*accumulator) *accumulator = registration.aggregate->create().release();
        (*accumulator)->add(argumentsOf(count, values));
    });
}

void finishAggregate(sqlite3_context* context) {
    jet::Accumulator** slot = accumulatorOf(context, false);
    const std::unique_ptr<jet::Accumulator> accumulator(slot ? *slot : nullptr);
    guarded(context, [&](const Registration& registration) {
        setResult(context, accumulator ? accumulator->result() : registration.aggregate->create()->result());
    });
}

template<ColumnType type>
void mark(sqlite3_context* context, int, sqlite3_value** values) {
    sqlite3_result_value(context, values[0]);
    sqlite3_result_subtype(context, subtypeOf(type));
}

int compareTexts(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return jet::compareUtf8({static_cast<const char*>(a), static_cast<size_t>(sizeA)},
                            {static_cast<const char*>(b), static_cast<size_t>(sizeB)});
}

// Triggers and indexes of a file may use these functions too: none of them can do harm.
constexpr int pure = SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_SUBTYPE | SQLITE_DETERMINISTIC;
constexpr int impure = pure & ~SQLITE_DETERMINISTIC;
constexpr int anyCount = -1;

void deleteRegistration(void* registration) {
    delete static_cast<Registration*>(registration);
}

void registerFunction(SqliteSession& session, const char* name, int count, int flags,
                      Variant (*function)(std::span<const Variant>), Callback callback = &callFunction) {
    session.check(sqlite3_create_function_v2(session.database(), name, count, flags,
                                             new Registration{&session, function, nullptr}, callback, nullptr, nullptr,
                                             &deleteRegistration));
}

void registerAggregate(SqliteSession& session, const jet::Aggregate& aggregate) {
    session.check(sqlite3_create_function_v2(session.database(), aggregate.nativeName, anyCount, pure,
                                             new Registration{&session, nullptr, &aggregate}, nullptr, &stepAggregate,
                                             &finishAggregate, &deleteRegistration));
}

template<ColumnType type>
void registerMarker(SqliteSession& session) {
    session.check(sqlite3_create_function_v2(session.database(), SqliteFunctions::markerFor(type), 1, pure, nullptr,
                                             &mark<type>, nullptr, nullptr, nullptr));
}

} // namespace

void SqliteFunctions::registerAll(SqliteSession& session) {
    for (const jet::Function& function : jet::functions())
        if (function.implementation)
            registerFunction(session, function.nativeName, anyCount, function.deterministic ? pure : impure,
                             function.implementation);
    for (const jet::Operator& op : jet::operators())
        registerFunction(session, op.nativeName, op.argumentCount, pure, op.implementation, callbackOf(op));
    for (const jet::Operator& store : jet::storeFunctions())
        registerFunction(session, store.nativeName, store.argumentCount, pure, store.implementation);
    for (const jet::Aggregate& aggregate : jet::aggregates())
        if (aggregate.create) registerAggregate(session, aggregate);
    registerMarker<ColumnType::Boolean>(session);
    registerMarker<ColumnType::Currency>(session);
    registerMarker<ColumnType::Date>(session);
    session.check(
        sqlite3_create_collation_v2(session.database(), textCollation, SQLITE_UTF8, nullptr, &compareTexts, nullptr));
}

unsigned int SqliteFunctions::subtypeFor(ColumnType type) {
    return subtypeOf(type);
}

const char* SqliteFunctions::markerFor(ColumnType type) {
    switch (type) {
    case ColumnType::Boolean: return "as_yesno";
    case ColumnType::Currency: return "as_currency";
    case ColumnType::Date: return "as_date";
    default: return nullptr;
    }
}

} // namespace dao
