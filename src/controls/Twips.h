#pragma once
// The only place where twips become pixels and back.
#include "controls/Screen.h"

#include <cmath>

namespace mkl {

inline int pixelsX(double twips) {
    return static_cast<int>(std::lround(twips / screen().TwipsPerPixelX()));
}
inline int pixelsY(double twips) {
    return static_cast<int>(std::lround(twips / screen().TwipsPerPixelY()));
}
inline Single twipsX(double pixels) {
    return static_cast<Single>(pixels * screen().TwipsPerPixelX());
}
inline Single twipsY(double pixels) {
    return static_cast<Single>(pixels * screen().TwipsPerPixelY());
}

} // namespace mkl
