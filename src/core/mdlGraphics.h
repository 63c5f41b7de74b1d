#pragma once

class QFrame;

/// Plain functions for the look of the controls.
namespace mkl::mdlGraphics {

/// Gives a widget the flat edge of the panes: sunken, one pixel wide, on every platform style.
void SetFlatEdge(QFrame* Frame);

} // namespace mkl::mdlGraphics
