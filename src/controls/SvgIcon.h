#pragma once
#include <QIcon>
#include <QString>

namespace mkl {

/// A picture drawn from an SVG file at whatever size it is needed. On a selected row it keeps its colours, but its
/// grey lines turn white, since grey cannot be told from the colour of a selection.
QIcon svgIcon(const QString& file);

} // namespace mkl
