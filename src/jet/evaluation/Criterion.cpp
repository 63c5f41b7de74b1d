#include "jet/evaluation/Criterion.h"

#include "jet/evaluation/Conditions.h"
#include "jet/evaluation/OutputExpressions.h"
#include "jet/syntax/Parser.h"

namespace jet {

namespace {

constexpr mkl::Long findSyntax = 3077;
constexpr mkl::Long aggregateInCondition = 3096;

void addTerms(const Expression& condition, std::vector<const Expression*>& terms) {
    const auto* const junction = condition.as<Junction>();
    if (!junction || !junction->isAnd) {
        terms.push_back(&condition);
        return;
    }
    for (const ExpressionPtr& operand : junction->operands)
        addTerms(*operand, terms);
}

// Of the terms that must all hold those that are the same for all rows come first, as an engine asks them.
EvaluatorPtr prepareTerms(const Expression& condition) {
    std::vector<const Expression*> terms;
    addTerms(condition, terms);
    if (terms.size() == 1) return prepare(condition).evaluator;
    std::vector<EvaluatorPtr> constant, changing;
    for (const Expression* term : terms) {
        Prepared prepared = prepare(*term);
        (prepared.isConstant ? constant : changing).push_back(std::move(prepared.evaluator));
    }
    std::ranges::move(changing, std::back_inserter(constant));
    return makeJunction(true, std::move(constant));
}

} // namespace

struct Criterion::Body {
    EvaluatorPtr condition;
    QList<int> columns;
};

Criterion::Criterion(std::shared_ptr<const Body> body)
    : body_(std::move(body)) {}

Criterion Criterion::parse(QStringView text, std::span<const OutputColumn> columns) {
    auto body = std::make_shared<Body>();
    readWithSyntaxError(findSyntax, text, [&] {
        TokenStream tokens(text);
        const ExpressionPtr condition = parseCriterion(tokens);
        bindToOutputs(*condition, columns, aggregateInCondition);
        addColumnsOf(*condition, body->columns);
        body->condition = prepareTerms(*condition);
    });
    return Criterion(std::move(body));
}

bool Criterion::holds(const RowValues& row) const {
    return body_->condition->isTrue(row);
}

const QList<int>& Criterion::columns() const {
    return body_->columns;
}

} // namespace jet
