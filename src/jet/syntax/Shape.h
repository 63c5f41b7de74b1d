#pragma once
// A statement with its literals taken out: "[Parent]=17" and "[Parent]=18" have one shape, so one
// translation and one prepared statement serve both.
#include "base/Variant.h"

#include <QString>
#include <QVarLengthArray>

namespace jet {

struct Shape {
    QString key;                               ///< tokens in normal form, every literal as a mark of its type
    QVarLengthArray<mkl::Variant, 8> literals; ///< in the order of the text
};

/// One pass of the lexer, nothing else. Raises the dialect's error for what is no token.
Shape shapeOf(QStringView text);

} // namespace jet
