#pragma once
// What differs by engine in a native text. The writer does everything else itself: operators, functions,
// statements and joins look alike on all engines.
//
// Values in native text: yes/no is -1 or 0; Long, Double and Currency are numbers that compare with each other;
// dates compare with dates; a text compares as the dialect says only where it is collated().
#include "jet/model/Schema.h"

#include <QByteArray>
#include <QStringView>

namespace jet {

class Target {
public:
    virtual ~Target() = default;

    /// A table or column name, quoted so that it can be nothing else.
    virtual QByteArray name(QStringView declared) const = 0;
    /// Parameter of that number, from 1. One number may stand several times in a text.
    virtual QByteArray parameter(int number, ColumnType type) const = 0;
    /// A value handed to a registered function (Functions.h, Operators.h), so that the function sees a Variant of
    /// that type where the engine itself does not tell it: date, currency, yes/no.
    virtual QByteArray operand(const QByteArray& value, ColumnType type) const = 0;
    /// A text where its order or equality counts: comparison, ORDER BY, GROUP BY, DISTINCT, IN, Min, Max.
    virtual QByteArray collated(const QByteArray& text) const = 0;
    /// The same where the text itself is a result: repeats are told by the order, and one of them is given.
    virtual QByteArray collatedOutput(const QByteArray& text) const { return collated(text); }
    /// A condition of the engine as a value: -1, 0 or Null.
    virtual QByteArray yesNo(const QByteArray& condition) const = 0;
    /// A number as a condition of the engine: true for all but 0, unknown for Null.
    virtual QByteArray condition(const QByteArray& number) const = 0;
    /// A term of ORDER BY; Null comes first ascending and last descending. mayBeNull is false only where there can be
    /// none: an index may serve the order then.
    virtual QByteArray orderTerm(const QByteArray& value, bool descending, bool mayBeNull) const = 0;
    /// Whether rows that ORDER BY leaves equal come in the same order each time.
    virtual bool keepsEqualsInOrder() const { return true; }
    /// The type by which a new table declares a column, so that its schema gives the same type again.
    virtual QByteArray declaredType(ColumnType type) const = 0;
    /// The type of a column whose values the database gives out; such a column is the primary key.
    virtual QByteArray counterType() const = 0;

    // Statements with a name of their own; all arguments are quoted names, columns a list of them.

    /// Tells the rows of a table apart by columns that are never Null.
    virtual QByteArray keyIndex(const QByteArray& name, const QByteArray& table, const QByteArray& columns) const = 0;
    /// Where a row of parent goes, those rows of child go whose column holds the value of the parent's column.
    virtual QByteArray deletionRule(const QByteArray& name, const QByteArray& parent, const QByteArray& parentColumn,
                                    const QByteArray& child, const QByteArray& childColumn) const = 0;
    /// What tells apart the rows of a table that declares no primary key. table is a quoted name.
    virtual QByteArray rowIdentity(const QByteArray& table) const = 0;
    /// The table as a derived one, without its alias, that has its row identity under the same name.
    virtual QByteArray withRowIdentity(const QByteArray& table) const = 0;
};

} // namespace jet
