#pragma once
#include "base/types.h"

#include <QString>
#include <exception>

namespace mkl {

/// The one exception type below the controls: a run-time error with its number.
class RunTimeError : public std::exception {
public:
    RunTimeError(Long number, QString description, QString source = {});

    Long number() const { return number_; }
    const QString& description() const { return description_; } ///< German, for people
    const QString& source() const { return source_; }           ///< native text of the engine, for logs; may be empty
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    Long number_;
    QString description_;
    QString source_;
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
