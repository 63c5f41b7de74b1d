#include "apps/mklart/JsonText.h"

#include "base/DateTime.h"

#include <QLocale>

namespace mkl {

using namespace Qt::StringLiterals;

QString jsonString(QStringView text) {
    QString json = u"\""_s;
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\')
            json += u'\\' + QString(c);
        else if (c.unicode() < 0x20 || c.unicode() == 0x7F || c.isSurrogate())
            json += u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
        else
            json += c;
    }
    return json + u'"';
}

QString jsonValue(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null: return u"null"_s;
    case Variant::Type::Double: return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case Variant::Type::Date: {
        const QString iso = isoFromDate(value.toDate());
        return jsonString(iso.endsWith(u" 00:00:00") ? iso.first(10) : iso);
    }
    case Variant::Type::Text:
    case Variant::Type::Binary: return jsonString(value.toText());
    case Variant::Type::Boolean:
    case Variant::Type::Int:
    case Variant::Type::Currency: break;
    }
    return value.toText();
}

} // namespace mkl
