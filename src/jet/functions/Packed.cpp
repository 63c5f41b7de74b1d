#include "jet/functions/Packed.h"

namespace jet {

namespace {

using mkl::Variant;

// A code point that is no character and never stands in texts meant for exchange.
constexpr QChar mark(u'\uFDD0');
constexpr QByteArrayView utf8Mark("\xEF\xB7\x90");

QString marked(char16_t kind, const QString& value) {
    return QString(mark) + QChar(kind) + value;
}

} // namespace

Variant packed(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Boolean: return marked(u'B', value.toBoolean() ? QStringLiteral("1") : QString());
    case Variant::Type::Currency: return marked(u'C', QString::number(value.toCurrency()));
    case Variant::Type::Date: return marked(u'D', QString::number(value.toDate(), 'g', 17));
    case Variant::Type::Text: return value.toText().startsWith(mark) ? Variant(marked(u'T', value.toText())) : value;
    default: return value;
    }
}

Variant unpacked(const Variant& value) {
    if (!value.isText()) return value;
    const QString text = value.toText();
    if (text.size() < 2 || text.front() != mark) return value;
    const QString content = text.sliced(2);
    switch (text[1].unicode()) {
    case u'B': return !content.isEmpty();
    case u'C': return Variant::currency(content.toLongLong());
    case u'D': return Variant::date(content.toDouble());
    case u'T': return content;
    default: return value;
    }
}

bool isPacked(QByteArrayView utf8) {
    return utf8.startsWith(utf8Mark);
}

} // namespace jet
