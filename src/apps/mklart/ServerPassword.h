#pragma once
#include <QStringList>

namespace mkl {

/// True where one of the arguments, or the value of an option, is the address of a server with a password in it.
bool holdsPassword(const QStringList& arguments);

} // namespace mkl
