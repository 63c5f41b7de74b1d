#pragma once
#include "jet/ExpressionBinder.h"
#include "jet/Grouping.h"
#include "jet/Plan.h"

namespace jet {

struct BoundOutput {
    const Expression* expression;
    OutputColumn column;
    QStringView text; ///< for messages
};

struct BoundOrder {
    const Expression* expression;
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
    bool isAggregated = false; ///< a row stands for a group of rows
    std::optional<Top> top;
    std::vector<Literal> fixedLiterals; ///< the rest of the structure rests on their values
    ExpressionList starColumns;         ///< what the stars stand for
};

/// Binds one SELECT.
class SelectBinder {
public:
    SelectBinder(SelectStatement& select, const Schema& schema, UnknownNames& unknown);

    BoundSelect bind();

private:
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
    BoundSelect bound_;
    ExpressionBinder expressions_;
    ExpressionMatcher matcher_;
    std::vector<Progress> progress_; ///< per item of the select list
    int busy_ = 0;                   ///< items that wait for each other's aliases
};

} // namespace jet
