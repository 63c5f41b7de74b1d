#pragma once
// Place and size of any widget in twips, relative to its parent. What was set reads back exactly, fractions of a
// pixel included, until something else moves the widget.
#include "base/types.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace mkl {

Single Left(const QWidget& widget);
Single Top(const QWidget& widget);
Single Width(const QWidget& widget);
Single Height(const QWidget& widget);

void setLeft(QWidget& widget, Single twips);
void setTop(QWidget& widget, Single twips);
void setWidth(QWidget& widget, Single twips);  ///< a negative width shows as none, and reads back
void setHeight(QWidget& widget, Single twips); ///< likewise

/// Whether the widget itself is switched on; a hidden parent does not count.
bool Visible(const QWidget& widget);
void setVisible(QWidget& widget, bool visible);

} // namespace mkl
