#include "apps/artikelkatalog/Failure.h"

#include "controls/Asker.h"

namespace mkl {

void showFailure(const QString& message) {
    asker().ask({.text = message, .flags = vbExclamation, .detail = currentError().Description()});
}

} // namespace mkl
