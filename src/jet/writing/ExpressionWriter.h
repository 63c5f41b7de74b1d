#pragma once
#include "jet/binding/Scope.h"
#include "jet/model/Plan.h"
#include "jet/model/Target.h"

#include <QHash>

namespace jet {

/// Whether a value of the one type needs no conversion to be one of the other.
bool storesAsIs(ColumnType from, ColumnType to);

/// The literals that a native text uses, each as one numbered parameter.
class ParameterList {
public:
    /// Its number, from 1.
    int numberOf(const Literal& literal);
    const QList<Parameter>& parameters() const { return parameters_; }

private:
    QList<Parameter> parameters_;
    QHash<std::pair<int, bool>, int> numbers_; ///< lists of thousands of keys are common
};

/// Writes bound expressions as native text. 3360 for a text that grows beyond all measure.
class ExpressionWriter {
public:
    /// outer writes the statement around a subquery.
    ExpressionWriter(const Target& target, const Scope& scope, ParameterList& parameters,
                     const ExpressionWriter* outer = nullptr)
        : target_(target)
        , scope_(scope)
        , parameters_(parameters)
        , outer_(outer) {}

    /// A value, a yes/no one as -1 or 0.
    QByteArray value(const Expression& expression);
    /// A condition of the engine.
    QByteArray condition(const Expression& expression);
    /// All terms at once; empty for no terms.
    QByteArray conjunction(const std::vector<const Expression*>& terms);
    /// A value where its order or equality counts.
    QByteArray comparable(const Expression& expression);
    /// The same as a term of ORDER BY or GROUP BY.
    QByteArray key(const Expression& expression);
    /// A value as one of that type.
    QByteArray stored(const Expression& expression, ColumnType type);
    /// A value handed to a registered function.
    QByteArray operand(const Expression& expression);

    /// A value that is an output column of that type. Where the type says nothing, the value tells it by itself.
    QByteArray output(const Expression& expression, ColumnType type);
    /// A derived table of the FROM clause, without its name.
    QByteArray derivedTable(const BoundSelect& select) const;
    bool isOfSubquery() const { return outer_ != nullptr; }

private:
    QByteArray subqueryValue(const Subquery& subquery, ColumnType type);
    QByteArray subqueryCondition(const Subquery& subquery);
    QByteArray quantified(const Subquery& subquery);
    QByteArray nested(const Subquery& subquery) const;
    QByteArray forcedInside(QByteArray argument, const Expression& expression) const;
    QByteArray writeValue(const Expression& expression);
    QByteArray nativeCondition(const Expression& expression);
    QByteArray columnLike(const Binary& like);
    QByteArray column(const Name& name);
    QByteArray call(const char* nativeName, std::initializer_list<const Expression*> operands);
    QByteArray call(const Call& call, ColumnType type);
    QByteArray concatenation(const Expression& expression);
    QByteArray aggregate(const Call& call);
    QByteArray rowKeys();
    QByteArray lazy(const Call& call, ColumnType type);
    QByteArray compared(const Expression& expression, Comparison comparison);
    QByteArray comparison(const Binary& binary);
    QByteArray between(const Between& between);
    QByteArray in(const In& in);
    QByteArray junction(const Junction& junction);

    const Target& target_;
    const Scope& scope_;
    ParameterList& parameters_;
    const ExpressionWriter* outer_;
};

} // namespace jet
