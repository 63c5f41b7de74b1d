#pragma once
// Readable failures: GoogleTest prints our values as a person would write them.
#include "base/RunTimeError.h"
#include "base/Variant.h"

#include <QString>
#include <gtest/gtest.h>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    *out << '"' << bytes.toStdString() << '"';
}
QT_END_NAMESPACE

namespace mkl {
inline void PrintTo(const Variant& value, std::ostream* out) {
    static constexpr const char* typeNames[] = {"Null",     "Boolean", "Int",  "Double",
                                                "Currency", "Date",    "Text", "Binary"};
    *out << typeNames[static_cast<int>(value.type())];
    if (!value.isNull()) *out << '(' << value.toText().toStdString() << ')';
}

/// Number of the run-time error that the call raises, 0 for none.
template<class Call>
Long errorOf(Call&& call) {
    try {
        call();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}
} // namespace mkl
