#include "core/ErrorFrame.h"

#include <QDebug>

namespace mkl {

void ErrorFrame::reportProcError(const RunTimeError& error, const QString& procName) const {
    const CurrentErrorScope scope(error);
    handler_->ReportProcError(procName);
}

void ErrorFrame::reportError(const RunTimeError& error, const QString& procName) const {
    const CurrentErrorScope scope(error);
    handler_->ReportError(0, handler_->ErrorContext().ClassName(), procName);
}

void ErrorFrame::logFailure(const QString& procName, const std::exception& failure) noexcept {
    qCritical().noquote() << procName << failure.what();
}

} // namespace mkl
