#include "core/ErrorContext.h"

namespace mkl {

void ErrorContext::fill(const QString& application, Long mode, mkl::Err& error, const QString& className) {
    application_ = application;
    mode_ = mode;
    error_ = &error;
    className_ = className;
}

const mkl::Err& ErrorContext::Err() const {
    if (!error_) throwError(err::ObjectNotSet);
    return *error_;
}

} // namespace mkl
