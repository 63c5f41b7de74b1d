#pragma once
#include "jet/binding/ExpressionBinder.h"
#include "jet/binding/Grouping.h"
#include "jet/model/Plan.h"

namespace jet {

struct BoundOutput {
    const Expression* expression;
    OutputColumn column;
    QStringView text; ///< for messages
};

struct BoundOrder {
    const Expression* expression;
    bool descending;
    int output; ///< with DISTINCT the output column that it is; else -1
};

struct BoundUnionPart {
    bool all; ///< repeats stay
    std::unique_ptr<BoundSelect> select;
};

struct UnionOrder {
    int output;
    bool descending;
};

/// A SELECT with its names bound and its star spelt out. Refers to the statement that it was made from.
struct BoundSelect {
    Scope scope;
    std::vector<BoundOutput> outputs;
    const std::vector<FromPtr>* from = nullptr;
    std::vector<const Expression*> where; ///< all must hold
    std::vector<const Expression*> groupBy;
    std::vector<const Expression*> having; ///< all must hold
    std::vector<BoundOrder> orderBy;
    bool distinct = false;
    std::vector<int> rowSources; ///< DISTINCTROW: the sources whose rows tell the rows apart; empty if all do
    bool isAggregated = false;   ///< a row stands for a group of rows
    std::optional<Top> top;
    std::vector<Literal> fixedLiterals; ///< the rest of the structure rests on their values
    ExpressionList starColumns;         ///< what the stars stand for
    std::vector<BoundUnionPart> unions; ///< the outputs of this one have the names and types of the whole
    std::vector<UnionOrder> unionOrder; ///< of a union, which has no orderBy
};

/// Binds one SELECT, or several joined by UNION.
class SelectBinder final : private SubqueryBinder {
public:
    SelectBinder(SelectStatement& select, const Schema& schema, UnknownNames& unknown);
    /// Of a subquery, which sees that part of the statement around it.
    SelectBinder(SelectStatement& select, const Schema& schema, UnknownNames& unknown, const Scope& outer,
                 Scope::Range outerRange);

    BoundSelect bind();

private:
    struct Surroundings {
        const Scope* scope = nullptr;
        Scope::Range range;
    };
    SelectBinder(SelectStatement& select, const Schema& schema, UnknownNames& unknown, Surroundings outer);

    void bindSubquery(Subquery& subquery, const Clause& clause) override;
    void bindOne();
    void bindUnion();
    void bindUnionOrder(const OrderItem& item);
    int unionColumn(const Expression& expression);
    void addFixedLiterals(const std::vector<Literal>& literals);
    Scope::Range bindDerived(TableSource& table);
    void bindDistinctRow();
    Scope::Range bindFrom(FromItem& item);
    Scope::Range bindJoin(Join& join);
    void bindOutputs();
    void expandStar(const OutputItem& item);
    const Expression* outputOfAlias(QStringView alias);
    void bindOutput(size_t index);
    void nameOutputs();
    void bindWhere();
    void bindGroupBy();
    void bindHaving();
    void bindOrderBy();
    void checkTop();
    void checkGrouping();
    const Expression* orderExpression(OrderItem& item, const Clause& clause);
    const Expression* outputAt(const Expression& item, const Literal& position);
    Clause clause(mkl::Long aggregateError) const;
    std::vector<const Expression*> outputExpressions() const;

    enum class Progress : quint8 { Open, Busy, Done };

    SelectStatement& select_;
    const Schema& schema_;
    UnknownNames& unknown_;
    Surroundings outer_;
    BoundSelect bound_;
    ExpressionBinder expressions_;
    ExpressionMatcher matcher_;
    std::vector<Progress> progress_; ///< per item of the select list
    int busy_ = 0;                   ///< items that wait for each other's aliases
};

} // namespace jet
