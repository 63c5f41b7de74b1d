#pragma once
#include "base/RunTimeError.h"

namespace mkl {

/// The current run-time error: what the error frame caught last and has not yet dealt with.
class Err {
public:
    Err(const Err&) = delete;
    Err& operator=(const Err&) = delete;

    Long Number() const { return number_; } ///< 0 without an error
    const QString& Description() const { return description_; }
    const QString& Source() const { return source_; } ///< native text of the engine; may be empty
    void Clear();

    void set(const RunTimeError& error);

private:
    Err() = default;
    friend Err& currentError();

    Long number_ = 0;
    QString description_;
    QString source_;
};

/// The one current error of the process: all controls run on the user-interface thread.
Err& currentError();

} // namespace mkl
