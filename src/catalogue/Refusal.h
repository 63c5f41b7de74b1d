#pragma once
#include "base/RunTimeError.h"
#include "base/Texts.h"

namespace mkl {

/// Numbers of the run-time errors that the catalogue folder raises by itself.
namespace refusal {
inline constexpr Long Internal = 3000;
inline constexpr Long Missing = 3011; ///< table, column or program
inline constexpr Long DoubledKey = 3022;
inline constexpr Long NoFile = 3024;
inline constexpr Long ReadOnly = 3027;
inline constexpr Long Damaged = 3049;
inline constexpr Long NullKey = 3058;
inline constexpr Long Cancelled = 3059;
inline constexpr Long ChangedByAnother = 3197;
inline constexpr Long Exists = 3204;
inline constexpr Long NotOffered = 3251;
inline constexpr Long ForeignFile = 3343;
inline constexpr Long WrongType = 3421;
} // namespace refusal

/// Throws the run-time error of that number with a text that says more than the number's own.
[[noreturn]] inline void refuse(Long number, TextId id, std::initializer_list<QString> arguments = {}) {
    throw RunTimeError(number, text(id, arguments));
}

} // namespace mkl
