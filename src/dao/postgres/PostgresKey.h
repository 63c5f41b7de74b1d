#pragma once
#include <QByteArray>

namespace dao {

/// Native definitions of mkl_key(text), which gives the bytes of jet::sortKey(), of mkl_fold(text), a text as patterns
/// see it, and of the tables of characters behind them.
QByteArray postgresKeyDefinitions();

} // namespace dao
