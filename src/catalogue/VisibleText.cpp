#include "catalogue/VisibleText.h"

#include <QList>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

bool isInvisible(char32_t c) {
    const auto category = QChar::category(c);
    return category == QChar::Other_Control || category == QChar::Other_Format || category == QChar::Other_Surrogate ||
           category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

} // namespace

QString visibleText(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (const char32_t c : text.toUcs4()) {
        if (!isInvisible(c))
            result += QString::fromUcs4(&c, 1);
        else if (c == U'\n')
            result += u"\\n"_s;
        else if (c == U'\t')
            result += u"\\t"_s;
        else
            result += u"\\u{%1}"_s.arg(static_cast<uint>(c), 0, 16);
    }
    return result;
}

} // namespace mkl
