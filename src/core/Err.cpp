#include "core/Err.h"

namespace mkl {

void Err::Clear() {
    number_ = 0;
    description_.clear();
    source_.clear();
}

void Err::set(const RunTimeError& error) {
    number_ = error.number();
    description_ = error.description();
    source_ = error.source();
}

Err& currentError() {
    static Err instance;
    return instance;
}

} // namespace mkl
