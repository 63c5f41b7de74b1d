#pragma once
#include "base/Ref.h"
#include "base/Variant.h"
#include "core/ErrorContext.h"

#include <functional>

namespace mkl {

/// The error object of a control: the only place that shows run-time errors, and the source of coded texts.
/// Execution goes on after a report. A failure of the handler itself is not caught.
class ErrorHandler : public RefCounted {
public:
    mkl::ErrorContext& ErrorContext() { return context_; }

    /// Shows the current error together with the procedure's name.
    virtual void ReportProcError(const QString& ProcName);
    /// Code 0: the current error with class and procedure. Any other code: its text with v1 and v2 put in.
    /// Detail stands below the text; Flags 0 shows the warning sign and OK.
    virtual void ReportError(Long Code, const QString& ClassName, const QString& ProcName, const QString& Detail = {},
                             Long Flags = 0, const Variant& v1 = {}, const Variant& v2 = {});
    /// The text of a coded message, for captions and questions of dialogs. Plain text: a "&" in a value stays one.
    virtual QString MessageText(Long Code, const Variant& v1 = {}, const Variant& v2 = {}) const;
    /// Asks under the session's caption; flags and result as of a message box.
    virtual Long AskUser(const QString& Question, Long Flags);

private:
    Long show(const QString& message, const QString& detail, Long flags) const;
    void showRunTimeError(const QString& place, const QString& detail) const;

    mkl::ErrorContext context_;
};

using ErrorHandlerFactory = std::function<Ref<ErrorHandler>()>;

/// A fresh error object, of the factory in force.
Ref<ErrorHandler> newErrorHandler();
/// Puts another factory in force and returns the former one; an empty one restores ErrorHandler itself.
ErrorHandlerFactory setErrorHandlerFactory(ErrorHandlerFactory factory);

} // namespace mkl
