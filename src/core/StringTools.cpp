#include "core/StringTools.h"

#include "base/RunTimeError.h"

#include <QList>

namespace mkl {

namespace {

constexpr char32_t nonBreakingBlank = 0xA0;
constexpr char32_t lostCharacter = 0xFFFD; // stands where half a pair stood

} // namespace

void StringTools::AppendCriterion(QString& Target, const QString& Clause, const QString& Separator,
                                  bool /*Conditions*/) const {
    if (!Target.isEmpty()) Target += Separator;
    Target += Clause;
}

QString StringTools::Enclose(const QString& Text, const QString& Pair) const {
    if (Pair.size() != 2) throwError(err::InvalidArgument);
    if (Text.size() >= 2 && Text.startsWith(Pair[0]) && Text.endsWith(Pair[1])) return Text;
    return Pair[0] + Text + Pair[1];
}

Variant StringTools::DefaultValue(const Variant& Value, TypeCode Type) const {
    switch (Type) {
    case IntegerType:
    case LongType: return Value.isNull() ? Variant(Long(0)) : Value;
    case SingleType:
    case DoubleType: return Value.isNull() ? Variant(0.0) : Value;
    case CurrencyType: return Value.isNull() ? Variant::currency(0) : Value;
    case DateType: return Value.isNull() ? Variant::date(0) : Value;
    case TextType: return Value.isNull() ? Variant(QString()) : Value;
    case BooleanType: return Value.isNull() ? Variant(false) : Value;
    }
    throwError(err::InvalidArgument);
}

QString StringTools::DefaultValue(const Variant& Value, const QString& Default) const {
    return Value.isNull() ? Default : Value.toText();
}

Variant StringTools::TitleFromName(const Variant& Name, Long MaxLength) const {
    if (Name.isNull()) return {};
    const QString title = Name.toText().simplified();
    return MaxLength > 0 ? title.left(MaxLength).trimmed() : title;
}

QString StringTools::StorableName(const QString& Text, bool Trim, const QString& Replacement) const {
    QString name;
    for (const char32_t character : Text.toUcs4()) {
        const bool isUnreadable = QChar::category(character) == QChar::Other_Control || character == lostCharacter ||
                                  QChar::isNonCharacter(character);
        if (QChar::isSpace(character))
            name += character == nonBreakingBlank ? QChar(nonBreakingBlank) : QChar(u' ');
        else if (isUnreadable)
            name += Replacement;
        else
            name += QStringView(QChar::fromUcs4(character));
    }
    return Trim ? name.trimmed() : name;
}

} // namespace mkl
