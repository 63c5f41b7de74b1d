#include "base/RunTimeError.h"

#include "base/Texts.h"

namespace mkl {

RunTimeError::RunTimeError(Long number, QString description, QString source, std::optional<ErrorPlace> place)
    : number_(number)
    , description_(std::move(description))
    , source_(std::move(source))
    , place_(std::move(place))
    , utf8_(description_.toUtf8()) {}

void throwError(Long number, std::initializer_list<QString> arguments, QString source) {
    throw RunTimeError(number, runTimeText(number, arguments), std::move(source));
}

} // namespace mkl
