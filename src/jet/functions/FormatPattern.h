#pragma once
// Patterns of Format. In all of them "\" takes the next character as it is and quotes a whole text.
#include "base/Variant.h"
#include "jet/functions/Calendar.h"

#include <QList>
#include <QString>

namespace jet {

enum class PatternKind : quint8 { Number, Date, Text, Literal };
/// Decided by the first character that is a placeholder.
PatternKind kindOfPattern(QStringView pattern);

/// The parts between the semicolons; never empty.
QList<QStringView> patternSections(QStringView pattern);
/// Appends what stands escaped or quoted at that place and moves behind it; false where nothing does.
bool takeLiteral(QStringView pattern, qsizetype& at, QString& text);

/// Sections: positive, negative, zero. An empty section, and one that lacks, is the first one.
QString formatNumber(const mkl::Variant& number, QStringView pattern);
QString formatDate(double date, QStringView pattern, const WeekRule& rule);
/// "@" is a character or a blank, "&" a character or nothing, both filled from the right, with "!" from the left;
/// "<" and ">" change the case.
QString formatText(const QString& text, QStringView section);

} // namespace jet
