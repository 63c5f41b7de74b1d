#pragma once
#include "jet/binding/Scope.h"

#include <functional>

namespace jet {

/// What an expression may do where it stands.
struct Clause {
    mkl::Long aggregateError = 0;                          ///< raised for an aggregate; 0 where one may stand
    NameResolver::Range sources;                           ///< tables whose columns it sees
    std::function<const Expression*(QStringView)> aliasOf; ///< the output column of that name, bound; may be empty
};

/// Binds the queries inside of expressions.
class SubqueryBinder {
public:
    virtual ~SubqueryBinder() = default;
    /// Fills in what the subquery's fields marked "bound" say, its comparison aside.
    virtual void bindSubquery(Subquery& subquery, const Clause& clause) = 0;
};

/// Binds expressions: names to columns, calls to functions, and gives each node its type.
class ExpressionBinder {
public:
    /// Without a binder for subqueries the expressions must have none.
    ExpressionBinder(const NameResolver& names, UnknownNames& unknown, SubqueryBinder* subqueries = nullptr)
        : names_(names)
        , unknown_(unknown)
        , subqueries_(subqueries) {}

    /// 3061 names are collected, 3075 wrong number of arguments, 3079 ambiguous name, 3085 unknown function,
    /// 3095 aggregate in an aggregate, 3464 clash of types.
    void bind(Expression& expression, const Clause& clause);

private:
    ColumnType bindName(Name& name, const Clause& clause);
    ColumnType bindBinary(Binary& binary);
    ColumnType bindCall(Call& call, const Expression& expression, const Clause& clause);
    ColumnType bindAggregate(Call& call, const Expression& expression, const Clause& clause);
    ColumnType bindSubquery(Subquery& subquery, const Expression& expression, const Clause& clause);
    void bindOperands(Expression& expression, const Clause& clause);

    const NameResolver& names_;
    UnknownNames& unknown_;
    SubqueryBinder* subqueries_;
};

} // namespace jet
