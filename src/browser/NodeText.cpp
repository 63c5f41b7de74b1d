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

QString positionText(const Variant& order) {
    if (order.isNull()) return {};
    const qint64 position = order.toLong();
    const QString digits = QString::number(qAbs(position)).rightJustified(3, u'0');
    return position < 0 ? u'-' + digits : digits;
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
