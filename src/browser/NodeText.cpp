#include "browser/NodeText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString textOrEmpty(const Variant& value) {
    return value.isNull() ? QString() : value.toText();
}

QStringView withoutBlanks(QStringView text) {
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

} // namespace

QString zeroPadded(const Variant& number, qsizetype digits) {
    if (number.isNull()) return {};
    const qint64 value = number.toLong();
    std::array<char, 11> characters; // of a Long without its sign
    const auto end = std::to_chars(characters.data(), characters.data() + characters.size(), qAbs(value)).ptr;
    const qsizetype zeros = std::max<qsizetype>(0, digits - (end - characters.data()));
    QString text;
    text.reserve(digits + 2);
    if (value < 0) text.append(u'-');
    text.resize(text.size() + zeros, u'0');
    return text.append(QLatin1StringView(characters.data(), end));
}

QString positionText(const Variant& order) {
    return zeroPadded(order, 3);
}

QString nodeText(const Variant& order, const Variant& name) {
    return positionText(order) + " - "_L1 + textOrEmpty(name);
}

QString nodeKey(const Variant& categoryKey) {
    return "A-"_L1 + textOrEmpty(categoryKey);
}

Long OrderFromNodeText(QStringView text) {
    return withoutBlanks(text.first(qMax(0, text.indexOf(u'-')))).toInt();
}

QString NameFromNodeText(QStringView text) {
    return withoutBlanks(text.sliced(text.indexOf(u'-') + 1)).toString();
}

} // namespace mkl
