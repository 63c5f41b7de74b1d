#pragma once
// What every target demands of the code under test: it answers, or raises a run-time error with a number of the
// dialect.
#include "base/RunTimeError.h"

#include <QString>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

inline QString textOf(const uint8_t* data, size_t size) {
    return QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

/// Set by a target whose input got through to the end; such inputs are worth mutating.
inline bool accepted = false;

/// Ends the process, which is how a target tells of a finding.
[[noreturn]] inline void finding(const QString& what) {
    std::fprintf(stderr, "FINDING: %s\n", qPrintable(what));
    std::abort();
}

/// The number of the error that the call raises, 0 for none. An internal error is a finding.
template<class Call>
mkl::Long numberOf(Call&& call) {
    constexpr mkl::Long internalError = 3000;
    try {
        call();
    } catch (const mkl::RunTimeError& error) {
        if (error.number() == internalError || error.number() == 0 || error.description().isEmpty())
            finding(error.description() + QStringLiteral(" | ") + error.source());
        return error.number();
    }
    return 0;
}

} // namespace fuzz
