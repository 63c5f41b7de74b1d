#include "core/ErrorHandler.h"

#include "base/Texts.h"
#include "controls/Asker.h"
#include "core/MessageText.h"

namespace mkl {

namespace {

ErrorHandlerFactory& factoryInForce() {
    static ErrorHandlerFactory factory;
    return factory;
}

} // namespace

void ErrorHandler::ReportProcError(const QString& ProcName) {
    showRunTimeError(ProcName, {});
}

void ErrorHandler::ReportError(Long Code, const QString& ClassName, const QString& ProcName, const QString& Detail,
                               Long Flags, const Variant& v1, const Variant& v2) {
    if (Code == 0)
        showRunTimeError(ClassName + u'.' + ProcName, Detail);
    else
        show(MessageText(Code, v1, v2), Detail, Flags == 0 ? vbExclamation : Flags);
}

QString ErrorHandler::MessageText(Long Code, const Variant& v1, const Variant& v2) const {
    return messageText(Code, v1, v2);
}

Long ErrorHandler::AskUser(const QString& Question, Long Flags) {
    return show(Question, {}, Flags);
}

Long ErrorHandler::show(const QString& message, const QString& detail, Long flags) const {
    return asker().ask({.text = message, .flags = flags, .caption = context_.Application(), .detail = detail});
}

void ErrorHandler::showRunTimeError(const QString& place, const QString& detail) const {
    const Err& error = context_.Err();
    show(text(TextId::ErrorHandlerRunTimeError, {error.Description(), QString::number(error.Number()), place}), detail,
         vbCritical);
}

Ref<ErrorHandler> newErrorHandler() {
    const ErrorHandlerFactory& factory = factoryInForce();
    return factory ? factory() : makeRef<ErrorHandler>();
}

ErrorHandlerFactory setErrorHandlerFactory(ErrorHandlerFactory factory) {
    return std::exchange(factoryInForce(), std::move(factory));
}

} // namespace mkl
