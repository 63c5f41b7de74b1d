#include "jet/functions/FormatPattern.h"

#include <algorithm>

namespace jet {

namespace {

bool isPlaceholder(QChar c) {
    return c == u'@' || c == u'&';
}

} // namespace

bool takeLiteral(QStringView pattern, qsizetype& at, QString& text) {
    if (pattern[at] == u'\\') {
        text += pattern.sliced(at + 1).left(1);
        at += 2;
        return true;
    }
    if (pattern[at] != u'"') return false;
    const qsizetype end = pattern.indexOf(u'"', at + 1);
    const qsizetype length = (end < 0 ? pattern.size() : end) - at - 1;
    text += pattern.sliced(at + 1, length);
    at += length + 2;
    return true;
}

PatternKind kindOfPattern(QStringView pattern) {
    QString skipped;
    for (qsizetype at = 0; at < pattern.size();) {
        if (takeLiteral(pattern, at, skipped)) continue;
        const QChar c = pattern[at++].toLower();
        if (QStringView(u"0#%.,").contains(c)) return PatternKind::Number;
        if (QStringView(u"cdmyhnsqwt:/").contains(c)) return PatternKind::Date;
        if (QStringView(u"@&<>!").contains(c)) return PatternKind::Text;
    }
    return PatternKind::Literal;
}

QList<QStringView> patternSections(QStringView pattern) {
    QList<QStringView> sections;
    QString skipped;
    qsizetype start = 0;
    for (qsizetype at = 0; at < pattern.size();) {
        if (takeLiteral(pattern, at, skipped)) continue;
        if (pattern[at++] != u';') continue;
        sections.append(pattern.sliced(start, at - 1 - start));
        start = at;
    }
    sections.append(pattern.sliced(start));
    return sections;
}

QString formatText(const QString& text, QStringView section) {
    QString characters = text, literal;
    qsizetype placeholders = 0;
    bool fromLeft = false;
    for (qsizetype at = 0; at < section.size();) {
        if (takeLiteral(section, at, literal)) continue;
        const QChar c = section[at++];
        placeholders += isPlaceholder(c);
        fromLeft = fromLeft || c == u'!';
        if (c == u'<') characters = characters.toLower();
        if (c == u'>') characters = characters.toUpper();
    }
    // Places before the first character; negative where characters outnumber the places.
    qsizetype next = fromLeft || placeholders == 0 ? 0 : characters.size() - placeholders;
    QString result;
    bool begun = false;
    for (qsizetype at = 0; at < section.size();) {
        if (takeLiteral(section, at, result)) continue;
        const QChar c = section[at++];
        if (isPlaceholder(c)) {
            if (!begun && next > 0) result += QStringView(characters).first(next);
            begun = true;
            if (next >= 0 && next < characters.size())
                result += characters[next];
            else if (c == u'@')
                result += u' ';
            ++next;
        } else if (c != u'<' && c != u'>' && c != u'!') {
            result += c;
        }
    }
    result += QStringView(characters).sliced(std::min(next, characters.size()));
    return result;
}

} // namespace jet
