#include "apps/mklart/JsonText.h"

#include "base/DateTime.h"

#include <QLocale>
#include <cmath>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString escaped(QChar c) {
    return u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
}

QString jsonNumber(double number) {
    // JSON has no word for infinity; a number too large for any reader is one to all of them.
    if (std::isinf(number)) return number > 0 ? u"1e999"_s : u"-1e999"_s;
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

} // namespace

QString jsonString(QStringView text) {
    QString json;
    json.reserve(text.size() + 2);
    json += u'"';
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'"' || c == u'\\') {
            json += u'\\';
            json += c;
        } else if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            json += c;
            json += text[++i];
        } else if (c.unicode() < 0x20 || c.unicode() == 0x7F || c.isSurrogate()) {
            json += escaped(c);
        } else {
            json += c;
        }
    }
    return json + u'"';
}

QString jsonValue(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null: return u"null"_s;
    case Variant::Type::Double: return jsonNumber(value.toDouble());
    case Variant::Type::Date: return jsonString(dateText(value.toDate()));
    case Variant::Type::Text:
    case Variant::Type::Binary: return jsonString(value.toText());
    case Variant::Type::Boolean:
    case Variant::Type::Int:
    case Variant::Type::Currency: break;
    }
    return value.toText();
}

QString dateText(double date) {
    const QString iso = isoFromDate(date);
    return iso.endsWith(u" 00:00:00") ? iso.first(10) : iso;
}

} // namespace mkl
