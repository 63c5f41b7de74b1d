// Functions on texts. Numbers and dates count as their texts; positions count from 1.
#include "base/RunTimeError.h"
#include "jet/functions/Collation.h"
#include "jet/functions/FunctionBodies.h"
#include "jet/functions/Letters.h"

#include <algorithm>
#include <array>
#include <limits>

namespace jet::body {

using mkl::Long;
using mkl::throwError;
namespace err = mkl::err;

namespace {

// A text function may not eat up the memory, whatever a criterion asks for.
constexpr qsizetype longestText = 1 << 24;

void checkLength(qsizetype length) {
    if (length > longestText) throwError(err::Overflow);
}

Long notBelow(Long least, Long value) {
    if (value < least) throwError(err::InvalidArgument);
    return value;
}

// 0 compares to the letter, 1 and 2 as the database does.
Qt::CaseSensitivity caseRule(Arguments arguments, size_t place) {
    const Long rule = longOr(arguments, place, 1);
    if (rule < 0 || rule > 2) throwError(err::InvalidArgument);
    return rule == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

// Characters 128 to 159 of the Western European code page; the others are those of Latin-1.
constexpr std::array<char16_t, 32> codePage = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                               0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                               0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                               0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
constexpr Long firstOfCodePage = 128;

QChar characterOf(Long code) {
    const bool special = code >= firstOfCodePage && code < firstOfCodePage + static_cast<Long>(codePage.size());
    return special ? QChar(codePage[static_cast<size_t>(code - firstOfCodePage)]) : QChar(static_cast<char16_t>(code));
}

Long codeOf(QChar character) {
    const auto special = std::ranges::find(codePage, character.unicode());
    if (special != codePage.end()) return firstOfCodePage + static_cast<Long>(special - codePage.begin());
    constexpr Long questionMark = 63; // for what the code page lacks
    return character.unicode() < 256 ? character.unicode() : questionMark;
}

// Never changes the length: ß has no capital.
template<char32_t (*convert)(char32_t)>
Variant withEachCharacter(const Variant& value) {
    const QString text = value.toText();
    QString result;
    result.reserve(text.size());
    for (qsizetype at = 0; at < text.size();)
        result += QChar::fromUcs4(convert(takeCharacter(text, at)));
    return result;
}

constexpr QChar blank = u' ';

QStringView withoutLeading(QStringView text) {
    while (text.startsWith(blank))
        text = text.sliced(1);
    return text;
}

QStringView withoutTrailing(QStringView text) {
    while (text.endsWith(blank))
        text.chop(1);
    return text;
}

} // namespace

Variant asc(Arguments arguments) {
    const QString text = arguments[0].toText();
    if (text.isEmpty()) throwError(err::InvalidArgument);
    return codeOf(text[0]);
}

Variant chr(Arguments arguments) {
    const Long code = arguments[0].toLong();
    if (code < 0 || code > 255) throwError(err::InvalidArgument);
    return QString(characterOf(code));
}

// InStr([start,] text, sought[, rule]): a rule needs a start.
Variant inStr(Arguments arguments) {
    const size_t first = arguments.size() > 2 ? 1 : 0;
    const Long start = first ? notBelow(1, arguments[0].toLong()) : 1;
    const QString text = arguments[first].toText(), sought = arguments[first + 1].toText();
    if (start > text.size()) return Long(0);
    return static_cast<Long>(text.indexOf(sought, start - 1, caseRule(arguments, first + 2)) + 1);
}

// InStrRev(text, sought[, start[, rule]]): the last place that ends at start or before it.
Variant inStrRev(Arguments arguments) {
    const QString text = arguments[0].toText(), sought = arguments[1].toText();
    const Long start = longOr(arguments, 2, -1);
    if (start == 0 || start < -1) throwError(err::InvalidArgument);
    const Qt::CaseSensitivity rule = caseRule(arguments, 3);
    const qsizetype end = start == -1 ? text.size() : start;
    if (text.isEmpty() || end > text.size()) return Long(0);
    if (sought.isEmpty()) return static_cast<Long>(end);
    return static_cast<Long>(QStringView(text).first(end).lastIndexOf(sought, -1, rule) + 1);
}

Variant lCase(Arguments arguments) {
    return withEachCharacter<QChar::toLower>(arguments[0]);
}

Variant left(Arguments arguments) {
    return arguments[0].toText().left(notBelow(0, arguments[1].toLong()));
}

Variant len(Arguments arguments) {
    return static_cast<Long>(arguments[0].toText().size());
}

Variant lTrim(Arguments arguments) {
    return withoutLeading(arguments[0].toText()).toString();
}

Variant mid(Arguments arguments) {
    const QString text = arguments[0].toText();
    const Long start = notBelow(1, arguments[1].toLong());
    const Long length = notBelow(0, longOr(arguments, 2, std::numeric_limits<Long>::max()));
    return text.mid(start - 1, length);
}

// Replace(text, sought, replacement[, start[, count[, rule]]]); what stands before start is left out.
Variant replace(Arguments arguments) {
    const QString text = arguments[0].toText(), sought = arguments[1].toText(), replacement = arguments[2].toText();
    qsizetype from = notBelow(1, longOr(arguments, 3, 1)) - 1;
    Long count = notBelow(-1, longOr(arguments, 4, -1)); // -1: all
    const Qt::CaseSensitivity rule = caseRule(arguments, 5);
    if (from >= text.size()) return QString();
    QString result;
    while (count-- != 0 && !sought.isEmpty()) {
        const qsizetype at = text.indexOf(sought, from, rule);
        if (at < 0) break;
        checkLength(result.size() + (at - from) + replacement.size());
        result += QStringView(text).sliced(from, at - from);
        result += replacement;
        from = at + sought.size();
    }
    result += QStringView(text).sliced(from);
    return result;
}

Variant right(Arguments arguments) {
    return arguments[0].toText().right(notBelow(0, arguments[1].toLong()));
}

Variant rTrim(Arguments arguments) {
    return withoutTrailing(arguments[0].toText()).toString();
}

Variant space(Arguments arguments) {
    const Long count = notBelow(0, arguments[0].toLong());
    checkLength(count);
    return QString(count, blank);
}

Variant strComp(Arguments arguments) {
    const QString a = arguments[0].toText(), b = arguments[1].toText();
    const int order = caseRule(arguments, 2) == Qt::CaseSensitive ? a.compare(b) : compare(a, b);
    return Long(order < 0 ? -1 : order > 0);
}

// The character by its code or as the first of a text.
Variant string(Arguments arguments) {
    const Long count = notBelow(0, arguments[0].toLong());
    checkLength(count);
    if (!arguments[1].isText()) return QString(count, characterOf(notBelow(0, arguments[1].toLong()) % 256));
    const QString text = arguments[1].toText();
    if (text.isEmpty()) throwError(err::InvalidArgument);
    return QString(count, text[0]);
}

Variant strReverse(Arguments arguments) {
    const QString text = arguments[0].toText();
    QString result(text.size(), Qt::Uninitialized);
    qsizetype end = text.size();
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype from = at;
        takeCharacter(text, at);
        end -= at - from;
        std::copy(text.cbegin() + from, text.cbegin() + at, result.begin() + end);
    }
    return result;
}

Variant trim(Arguments arguments) {
    return withoutLeading(withoutTrailing(arguments[0].toText())).toString();
}

Variant uCase(Arguments arguments) {
    return withEachCharacter<QChar::toUpper>(arguments[0]);
}

} // namespace jet::body
