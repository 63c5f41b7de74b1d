#pragma once
// An error object that shows nothing and keeps what it was given.
#include "core/ErrorHandler.h"

#include <QList>

namespace mkl {

struct ErrorReport {
    Long code = 0;   ///< of ReportError
    Long number = 0; ///< of the current error
    QString className;
    QString procName;
    bool operator==(const ErrorReport&) const = default;
};

class RecordingErrorHandler final : public ErrorHandler {
public:
    void ReportProcError(const QString& ProcName) override {
        reports.append({0, currentError().Number(), {}, ProcName});
    }
    void ReportError(Long Code, const QString& ClassName, const QString& ProcName, const QString&, Long, const Variant&,
                     const Variant&) override {
        reports.append({Code, currentError().Number(), ClassName, ProcName});
    }

    QList<ErrorReport> reports;
};

} // namespace mkl
