#pragma once
#include "base/Variant.h"

#include <QString>

namespace mkl {

/// Small operations on texts and values.
class StringTools {
public:
    /// Type codes of DefaultValue, as the platform numbers its types.
    enum TypeCode : Long {
        IntegerType = 2,
        LongType = 3,
        SingleType = 4,
        DoubleType = 5,
        CurrencyType = 6,
        DateType = 7,
        TextType = 8,
        BooleanType = 11,
    };

    /// Target becomes Clause if it is empty, otherwise Target, Separator, Clause. Conditions tells criteria (" AND ")
    /// from enumerations ("," and ", ") for the reader; both are joined alike.
    void AppendCriterion(QString& Target, const QString& Clause, const QString& Separator, bool Conditions) const;

    /// Text between the two characters of Pair ("[]"), unless it has them already. Another Pair is error 5.
    QString Enclose(const QString& Text, const QString& Pair) const;

    /// Value, or the default of the type when Value is Null. An unknown code is error 5.
    Variant DefaultValue(const Variant& Value, TypeCode Type) const;
    /// Value as text, or Default when Value is Null.
    QString DefaultValue(const Variant& Value, const QString& Default) const;

    /// The description that is stored for a name or note: one line, without blanks at the ends and doubled ones,
    /// cut to MaxLength characters unless that is 0. Null stays Null.
    Variant TitleFromName(const Variant& Name, Long MaxLength = 0) const;

    /// A name as it can be stored and shown on one line: a line end or tabulator becomes a blank, any other character
    /// that is not for reading becomes Replacement. Trim takes the blanks at the ends away, those within stay.
    QString StorableName(const QString& Text, bool Trim, const QString& Replacement) const;
};

} // namespace mkl
