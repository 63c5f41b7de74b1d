#include "core/MessageText.h"

#include "base/Texts.h"

namespace mkl {

namespace {

QString argumentText(const Variant& value) {
    return value.isNull() ? QString() : value.toText();
}

} // namespace

QString messageText(Long code, const Variant& v1, const Variant& v2) {
    return codedText(code, {argumentText(v1), argumentText(v2)});
}

} // namespace mkl
