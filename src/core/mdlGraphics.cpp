#include "core/mdlGraphics.h"

#include <QFrame>

namespace mkl::mdlGraphics {

void SetFlatEdge(QFrame* Frame) {
    Frame->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    Frame->setLineWidth(1);
    Frame->setMidLineWidth(0);
}

} // namespace mkl::mdlGraphics
