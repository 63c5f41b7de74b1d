#include "apps/mklart/ServerPassword.h"

#include <QRegularExpression>
#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

bool holdsPassword(const QStringList& arguments) {
    // Whatever stands behind such a beginning, even where no server would understand the rest: a number up to the next
    // sign is a port, all else behind a colon and in front of an @ may be a password.
    static const QRegularExpression address(uR"(^(--[^=]*=)?postgres(ql)?://)"
                                            R"(([^/?#@\[]*:(?!\d*([/?#]|$)).*@|.*[?&](ssl)?pass(word|wd)?=))"_s,
                                            QRegularExpression::CaseInsensitiveOption |
                                                QRegularExpression::DotMatchesEverythingOption);
    return std::ranges::any_of(arguments, [](const QString& argument) { return address.match(argument).hasMatch(); });
}

} // namespace mkl
