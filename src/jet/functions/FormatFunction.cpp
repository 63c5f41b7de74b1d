// Format(value[, pattern[, first day of the week[, first week]]]). Numbers keep the decimal point, as all texts of
// numbers do; words and the order of dates are those of the country.
#include "base/Texts.h"
#include "jet/functions/Calendar.h"
#include "jet/functions/FormatPattern.h"
#include "jet/functions/FunctionBodies.h"

namespace jet::body {

using mkl::text;
using mkl::TextId;

namespace {

struct NamedPattern {
    QStringView name, pattern;
};
constexpr NamedPattern namedPatterns[] = {
    {u"Fixed", u"0.00"},          {u"Standard", u"#,##0.00"},      {u"Percent", u"0.00%"},
    {u"Scientific", u"0.00E+00"}, {u"General Date", u"c"},         {u"Long Date", u"dddddd"},
    {u"Short Date", u"ddddd"},    {u"Medium Date", u"dd-mmm-yy"},  {u"Long Time", u"ttttt"},
    {u"Short Time", u"hh:nn"},    {u"Medium Time", u"hh:nn AM/PM"}};

struct TruthNames {
    QStringView name;
    TextId yes, no;
};
constexpr TruthNames truthNames[] = {{u"Yes/No", TextId::FormatYes, TextId::FormatNo},
                                     {u"True/False", TextId::FormatTrue, TextId::FormatFalse},
                                     {u"On/Off", TextId::FormatOn, TextId::FormatOff}};

bool isName(QStringView pattern, QStringView name) {
    return pattern.compare(name, Qt::CaseInsensitive) == 0;
}

QString withoutName(const QString& pattern) {
    if (isName(pattern, u"Currency")) return text(TextId::FormatCurrency);
    for (const NamedPattern& named : namedPatterns)
        if (isName(pattern, named.name)) return named.pattern.toString();
    return pattern;
}

const TruthNames* findTruthNames(QStringView pattern) {
    for (const TruthNames& row : truthNames)
        if (isName(pattern, row.name)) return &row;
    return nullptr;
}

// The number that a value is or its text means, Null where there is none; the text of a date is its day number.
Variant numberIn(const Variant& value) {
    if (!value.isText()) return value.isNumber() ? value : Variant();
    double number = 0;
    if (mkl::parseNumber(value.toText(), number)) return number;
    const auto date = dateFromText(value.toText());
    return date ? Variant(*date) : Variant();
}

// Likewise; "31.05.2001" is a date before it is a number.
Variant dateIn(const Variant& value) {
    if (value.isText())
        if (const auto date = dateFromText(value.toText())) return Variant::date(*date);
    const Variant number = numberIn(value);
    return number.isNull() ? number : Variant::date(number.toDate());
}

// Null shows what the fourth section of a number or the second one of a text says.
QString formatNull(QStringView pattern) {
    const QList<QStringView> sections = patternSections(pattern);
    const qsizetype ofNull = kindOfPattern(pattern) == PatternKind::Text ? 1 : 3;
    return ofNull < sections.size() ? formatText({}, sections[ofNull]) : QString();
}

QString formatTextSections(const QString& value, QStringView pattern) {
    const QList<QStringView> sections = patternSections(pattern);
    return formatText(value, sections[value.isEmpty() && sections.size() > 1 ? 1 : 0]);
}

QString formatValue(const Variant& value, const QString& pattern, const WeekRule& rule) {
    const PatternKind kind = kindOfPattern(pattern);
    if (kind == PatternKind::Text) return formatTextSections(value.toText(), pattern);
    const Variant meant = kind == PatternKind::Date ? dateIn(value) : numberIn(value);
    if (meant.isNull()) return value.toText();
    return kind == PatternKind::Date ? formatDate(meant.toDate(), pattern, rule) : formatNumber(meant, pattern);
}

} // namespace

Variant format(Arguments arguments) {
    const Variant& value = arguments[0];
    const bool plain = arguments.size() < 2 || arguments[1].isNull();
    const QString pattern = plain ? QString() : arguments[1].toText();
    const WeekRule rule = weekRule(longOr(arguments, 2, 1), longOr(arguments, 3, 1));
    if (value.isNull()) return formatNull(pattern);
    if (pattern.isEmpty()) return value.toText();
    const Variant number = numberIn(value);
    if (!number.isNull()) {
        if (isName(pattern, u"General Number")) return mkl::numberText(number.toDouble());
        if (const TruthNames* names = findTruthNames(pattern)) return text(number.toBoolean() ? names->yes : names->no);
    } else if (isName(pattern, u"General Number") || findTruthNames(pattern)) {
        return value.toText();
    }
    return formatValue(value, withoutName(pattern), rule);
}

} // namespace jet::body
