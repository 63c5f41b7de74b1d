#pragma once
// What the check of a catalogue finds, as texts that can be compared.
#include "catalogue/CatalogueCheck.h"

#include <QSet>
#include <QString>

namespace mkl {

/// One text per finding: the damage and, told apart by "gap", the positions that are not 1 to n.
QSet<QString> findingsOf(const CatalogueCheck& check);
QSet<QString> findingsOf(const QString& file);

} // namespace mkl
