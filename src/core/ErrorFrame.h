#pragma once
// How a procedure of a control ends when it fails. What a procedure must tidy up belongs into a scope guard that is
// declared before the frame is entered, so that the report comes first and the tidying last.
#include "core/ErrorHandler.h"
#include "core/TransMark.h"
#include "dao/TransactionWatch.h"

#include <type_traits>
#include <utility>

namespace mkl {

class ErrorFrame {
public:
    explicit ErrorFrame(Ref<ErrorHandler> handler)
        : handler_(std::move(handler)) {}

    const Ref<ErrorHandler>& handler() const { return handler_; }
    /// Lets go of the error object; a failure from then on cannot be reported and goes up as error 91.
    void release() { handler_.reset(); }

    /// Reader: a failure of body is reported under the procedure's name, and the procedure goes on behind it.
    template<class Body>
    void reader(const QString& procName, Body&& body) const {
        try {
            std::forward<Body>(body)();
        } catch (const RunTimeError& error) {
            reportProcError(error, procName);
        }
    }

    /// Function: a failure of body is reported with class and procedure, and the default is the result.
    template<class Body, class Result = std::invoke_result_t<Body>>
    Result function(const QString& procName, Body&& body, std::type_identity_t<Result> defaultResult) const {
        try {
            return std::forward<Body>(body)();
        } catch (const RunTimeError& error) {
            reportError(error, procName);
        }
        return defaultResult;
    }

    /// Command: a failure of body is reported under the procedure's name, then what the mark began is rolled back, then
    /// after() puts right what is on screen; both only after a failure. A command that returns with more transaction
    /// levels than it began with makes the workspace's notifier say so. The control may be gone after the report.
    template<class Body, class After>
    void command(const QString& procName, TransMark& mark, Body&& body, After&& after) const {
        const dao::TransactionWatch watch(mark.workspace());
        try {
            std::forward<Body>(body)();
            return;
        } catch (const RunTimeError& error) {
            reportProcError(error, procName);
        }
        try {
            mark.rollbackIfOpen();
        } catch (const RunTimeError& failure) {
            logFailure(procName, failure);
        }
        std::forward<After>(after)();
    }
    template<class Body>
    void command(const QString& procName, TransMark& mark, Body&& body) const {
        command(procName, mark, std::forward<Body>(body), [] {});
    }

    /// Boundary: the outermost frame of what the event loop calls, through which nothing may be thrown. A report
    /// that fails ends in the log.
    template<class Body>
    void boundary(const QString& procName, Body&& body) const noexcept {
        try {
            reader(procName, std::forward<Body>(body));
        } catch (const std::exception& failure) {
            logFailure(procName, failure);
        }
    }

    /// Runs the steps one by one, a failing one is passed over.
    template<class... Steps>
    static void quietly(Steps&&... steps) noexcept {
        (ignoringErrors(std::forward<Steps>(steps)), ...);
    }

    /// Runs the steps one by one. For a failing one goOn() is asked, with the failure as the current error:
    /// true goes on behind the failed step, false ends at once. Result: false if so ended.
    template<class GoOn, class... Steps>
    static bool resumeNext(GoOn&& goOn, Steps&&... steps) {
        return (succeedsOrGoesOn(goOn, std::forward<Steps>(steps)) && ...);
    }

private:
    template<class Step>
    static void ignoringErrors(Step&& step) noexcept {
        try {
            std::forward<Step>(step)();
        } catch (const RunTimeError&) {
        }
    }

    template<class GoOn, class Step>
    static bool succeedsOrGoesOn(GoOn& goOn, Step&& step) {
        try {
            std::forward<Step>(step)();
            return true;
        } catch (const RunTimeError& error) {
            const CurrentErrorScope scope(error);
            return goOn();
        }
    }

    /// Makes a caught error the current one until its handling ends.
    class CurrentErrorScope {
    public:
        explicit CurrentErrorScope(const RunTimeError& error) { currentError().set(error); }
        ~CurrentErrorScope() { currentError().Clear(); }
        Q_DISABLE_COPY_MOVE(CurrentErrorScope)
    };

    void reportProcError(const RunTimeError& error, const QString& procName) const;
    void reportError(const RunTimeError& error, const QString& procName) const;
    static void logFailure(const QString& procName, const std::exception& failure) noexcept;

    Ref<ErrorHandler> handler_;
};

} // namespace mkl
