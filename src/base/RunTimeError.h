#pragma once
#include "base/types.h"

#include <QString>
#include <exception>
#include <optional>

namespace mkl {

/// Where in a statement an error stands.
struct ErrorPlace {
    QString token;          ///< as written, cut short; empty where the text ends too early
    qsizetype position = 0; ///< of its first character, from 0
};

/// The one exception type below the controls: a run-time error with its number.
class RunTimeError : public std::exception {
public:
    RunTimeError(Long number, QString description, QString source = {}, std::optional<ErrorPlace> place = {});

    Long number() const { return number_; }
    const QString& description() const { return description_; } ///< German, for people
    const QString& source() const { return source_; }           ///< native text of the engine, for logs; may be empty
    const std::optional<ErrorPlace>& place() const { return place_; } ///< of an error in a statement or criterion
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    Long number_;
    QString description_;
    QString source_;
    std::optional<ErrorPlace> place_;
    QByteArray utf8_;
};

/// Throws the run-time error of that number with its text from the table, the arguments put in.
[[noreturn]] void throwError(Long number, std::initializer_list<QString> arguments = {}, QString source = {});

/// Numbers that the code itself names; every number that can be raised has a row in texts_de.def.
namespace err {
inline constexpr Long InvalidArgument = 5;
inline constexpr Long Overflow = 6;
inline constexpr Long SubscriptOutOfRange = 9;
inline constexpr Long DivisionByZero = 11;
inline constexpr Long TypeMismatch = 13;
inline constexpr Long ObjectNotSet = 91;
inline constexpr Long BadPattern = 93;
inline constexpr Long InvalidNull = 94;
inline constexpr Long ElementNotFound = 35601;
inline constexpr Long KeyNotUnique = 35602;
} // namespace err

} // namespace mkl
