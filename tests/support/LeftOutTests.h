#pragma once
#include <QByteArray>

namespace mkl {

/// Patterns of tests that are not to run where the command line names none, each with a colon behind it. To be filled
/// before the program begins.
QByteArray& leftOutTests();

} // namespace mkl
