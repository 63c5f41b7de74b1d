#include "core/ErrorFrame.h"

#include <QDebug>

namespace mkl {

void ErrorFrame::reportProcError(const RunTimeError& error, const QString& procName) const {
    const Ref<ErrorHandler> handler = handler_; // while its message shows, the control may be closed
    const CurrentErrorScope scope(error);
    handler->ReportProcError(procName);
}

void ErrorFrame::reportError(const RunTimeError& error, const QString& procName) const {
    const Ref<ErrorHandler> handler = handler_;
    const CurrentErrorScope scope(error);
    handler->ReportError(0, handler->ErrorContext().ClassName(), procName);
}

void ErrorFrame::logFailure(const QString& procName, const std::exception& failure) noexcept {
    qCritical().noquote() << procName << failure.what();
}

} // namespace mkl
