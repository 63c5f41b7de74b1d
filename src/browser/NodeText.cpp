#include "browser/NodeText.h"

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
    const QString padded = QString::number(qAbs(value)).rightJustified(digits, u'0');
    return value < 0 ? u'-' + padded : padded;
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
