#pragma once
#include "base/Variant.h"

namespace mkl {

/// The text as a JSON string, quotes included.
QString jsonString(QStringView text);

/// The value in JSON, to the last digit: yes/no -1 or 0, a date "YYYY-MM-DD", with its time where it has one, binary
/// data as hexadecimal digits, Null null.
QString jsonValue(const Variant& value);

/// "YYYY-MM-DD", with " HH:MM:SS" where the time is not midnight.
QString dateText(double date);

} // namespace mkl
