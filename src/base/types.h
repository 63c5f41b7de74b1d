#pragma once
// The numeric types of the catalogue and of the controls' public members.
#include <QtGlobal>

namespace mkl {

using Long = qint32;    ///< keys, counts, flags
using Integer = qint16; ///< button and shift states, short booleans
using Single = float;   ///< positions in twips

} // namespace mkl
