#pragma once
#include "base/Texts.h"
#include "core/Err.h"
#include "core/ErrorFrame.h"

namespace mkl {

/// Tells the user what could not be done, with the current error below it.
void showFailure(const QString& message);

/// Runs the step; false if it failed, after the handler dealt with the current error.
template<class Step, class Handler>
bool succeeds(Step&& step, Handler&& handler) {
    const auto handled = [&handler] {
        handler();
        return false;
    };
    return ErrorFrame::resumeNext(handled, std::forward<Step>(step));
}

} // namespace mkl
