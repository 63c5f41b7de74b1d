#include "jet/functions/StoreConversions.h"

#include "base/RunTimeError.h"
#include "jet/functions/Operands.h"

namespace jet {

namespace {

constexpr mkl::Long nullInKey = 3058;
constexpr mkl::Long conversionError = 3421;

template<ColumnType type>
Variant stored(std::span<const Variant> operands) {
    try {
        return convertedTo(operands[0], type);
    } catch (const mkl::RunTimeError& error) {
        if (error.number() != mkl::err::TypeMismatch && error.number() != errCriterionType) throw;
        mkl::throwError(conversionError, {operands[1].toText()});
    }
}

Variant storedKey(std::span<const Variant> operands) {
    if (operands[0].isNull()) mkl::throwError(nullInKey);
    return operands[0];
}

Variant storable(std::span<const Variant> operands) {
    try {
        convertedTo(operands[0], static_cast<ColumnType>(operands[1].toLong()));
        return true;
    } catch (const mkl::RunTimeError&) {
        return false;
    }
}

constexpr Operator table[] = {
    {"mkl_storable", 2, storable},
    {"mkl_store_boolean", 2, stored<ColumnType::Boolean>},
    {"mkl_store_currency", 2, stored<ColumnType::Currency>},
    {"mkl_store_date", 2, stored<ColumnType::Date>},
    {"mkl_store_double", 2, stored<ColumnType::Double>},
    {"mkl_store_key", 1, storedKey},
    {"mkl_store_long", 2, stored<ColumnType::Int>},
    {"mkl_store_text", 2, stored<ColumnType::Text>},
};

} // namespace

const char* storeFunction(ColumnType type) {
    switch (type) {
    case ColumnType::Boolean: return "mkl_store_boolean";
    case ColumnType::Int: return "mkl_store_long";
    case ColumnType::Double: return "mkl_store_double";
    case ColumnType::Currency: return "mkl_store_currency";
    case ColumnType::Date: return "mkl_store_date";
    default: return "mkl_store_text";
    }
}

std::span<const Operator> storeFunctions() {
    return table;
}

} // namespace jet
