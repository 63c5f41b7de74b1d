#include "core/NameSearch.h"

#include "base/RunTimeError.h"
#include "jet/functions/Collation.h"

namespace mkl {

NameSearch::NameSearch(const QString& term)
    : term_(term.toStdString()) {
    if (term.contains(u'*')) pattern_.emplace(term);
}

bool NameSearch::finds(std::string_view name) const {
    if (!pattern_) return jet::compareUtf8(name, term_) == 0;
    if (pattern_->isBroken()) throwError(err::BadPattern);
    return pattern_->matchesUtf8(QByteArrayView(name.data(), static_cast<qsizetype>(name.size())));
}

} // namespace mkl
