#pragma once
#include "core/Err.h"

namespace mkl {

/// Whose errors an ErrorHandler reports. Filled once, when the control is created.
class ErrorContext {
public:
    /// mode of every control of this library.
    static constexpr Long ControlMode = 2;

    /// application: the identification that message boxes bear as their caption. className: of the control.
    void fill(const QString& application, Long mode, Err& error, const QString& className);

    const QString& Application() const { return application_; }
    Long Mode() const { return mode_; }
    const QString& ClassName() const { return className_; }
    /// The run-time error that is to be reported; error 91 before fill.
    const mkl::Err& Err() const;

private:
    QString application_;
    Long mode_ = 0;
    mkl::Err* error_ = nullptr;
    QString className_;
};

} // namespace mkl
