#include "jet/evaluation/Conditions.h"

#include "jet/evaluation/ListCondition.h"
#include "jet/functions/Collation.h"
#include "jet/functions/Like.h"

#include <algorithm>

namespace jet {

using Type = Variant::Type;

namespace {

template<class T>
int threeWay(T a, T b) {
    return a < b ? -1 : a > b;
}

// As an engine compares what it stores; the registered functions compare dates by their numbers.
int compareStored(const Variant& a, const Variant& b) {
    if (a.type() == Type::Date && b.type() == Type::Date)
        return threeWay(onTimeline(a.toDouble()), onTimeline(b.toDouble()));
    return compareValues(a, b);
}

int compareBy(Comparison rule, const Variant& a, const Variant& b) {
    return rule == Comparison::Native ? compareStored(a, b) : compareValues(a, b);
}

bool isUnknown(const Variant& a, const Variant& b) {
    return a.isNull() || b.isNull();
}

/// What has a truth of its own; as a value it is yes, no or Null.
class Condition : public Evaluator {
public:
    Variant value(const RowValues& row) const final { return fromTruth(truth(row)); }
};

class NotCondition final : public Condition {
public:
    explicit NotCondition(EvaluatorPtr operand)
        : operand_(std::move(operand)) {}

    Truth truth(const RowValues& row) const override { return inverse(operand_->truth(row)); }
    bool isTrue(const RowValues& row) const override { return operand_->isFalse(row); }
    bool isFalse(const RowValues& row) const override { return operand_->isTrue(row); }

private:
    EvaluatorPtr operand_;
};

class IsNullCondition final : public Condition {
public:
    IsNullCondition(EvaluatorPtr operand, bool negated)
        : operand_(std::move(operand))
        , negated_(negated) {}

    Truth truth(const RowValues& row) const override { return operand_->value(row).isNull() != negated_; }

private:
    EvaluatorPtr operand_;
    bool negated_;
};

class JunctionCondition final : public Condition {
public:
    JunctionCondition(bool isAnd, std::vector<EvaluatorPtr> operands)
        : isAnd_(isAnd)
        , operands_(std::move(operands)) {}

    Truth truth(const RowValues& row) const override {
        Truth any = false; // Or; And by the rule of De Morgan
        for (const EvaluatorPtr& operand : operands_) {
            const Truth truth = operand->truth(row);
            any = either(any, isAnd_ ? inverse(truth) : truth);
        }
        return isAnd_ ? inverse(any) : any;
    }
    bool isTrue(const RowValues& row) const override {
        const auto holds = [&row](const EvaluatorPtr& operand) { return operand->isTrue(row); };
        return isAnd_ ? std::ranges::all_of(operands_, holds) : std::ranges::any_of(operands_, holds);
    }
    bool isFalse(const RowValues& row) const override {
        const auto fails = [&row](const EvaluatorPtr& operand) { return operand->isFalse(row); };
        return isAnd_ ? std::ranges::any_of(operands_, fails) : std::ranges::all_of(operands_, fails);
    }

private:
    bool isAnd_;
    std::vector<EvaluatorPtr> operands_;
};

class ComparisonCondition final : public Condition {
public:
    ComparisonCondition(Op op, Comparison rule, EvaluatorPtr left, EvaluatorPtr right)
        : op_(op)
        , rule_(rule)
        , left_(std::move(left))
        , right_(std::move(right)) {}

    Truth truth(const RowValues& row) const override {
        const Variant left = left_->value(row), right = right_->value(row);
        if (isUnknown(left, right)) return {};
        return meets(op_, compareBy(rule_, left, right));
    }

private:
    Op op_;
    Comparison rule_;
    EvaluatorPtr left_, right_;
};

class BetweenCondition final : public Condition {
public:
    BetweenCondition(Comparison rule, EvaluatorPtr value, EvaluatorPtr low, EvaluatorPtr high)
        : rule_(rule)
        , value_(std::move(value))
        , low_(std::move(low))
        , high_(std::move(high)) {}

    Truth truth(const RowValues& row) const override {
        const Variant value = value_->value(row), low = low_->value(row), high = high_->value(row);
        if (value.isNull() || isUnknown(low, high)) return {};
        const int toLow = compareBy(rule_, value, low), toHigh = compareBy(rule_, value, high);
        return (toLow >= 0 && toHigh <= 0) || (toLow <= 0 && toHigh >= 0);
    }

private:
    Comparison rule_;
    EvaluatorPtr value_, low_, high_;
};

class LikeCondition final : public Condition {
public:
    LikeCondition(EvaluatorPtr value, EvaluatorPtr pattern)
        : value_(std::move(value))
        , pattern_(std::move(pattern)) {}

    Truth truth(const RowValues& row) const override {
        const Variant value = value_->value(row), pattern = pattern_->value(row);
        if (isUnknown(value, pattern)) return {};
        return matchesLike(value.toText(), pattern.toText(), BrokenPattern::MatchesNothing);
    }

private:
    EvaluatorPtr value_, pattern_;
};

class InCondition final : public Condition {
public:
    InCondition(Comparison rule, EvaluatorPtr value, std::vector<EvaluatorPtr> items, bool itemsFirst)
        : rule_(rule)
        , value_(std::move(value))
        , items_(std::move(items))
        , itemsFirst_(itemsFirst) {}

    Truth truth(const RowValues& row) const override { return find(row, rule_ != Comparison::Function); }
    bool isTrue(const RowValues& row) const override { return find(row, true) == Truth(true); }
    bool isFalse(const RowValues& row) const override { return find(row, true, true) == Truth(false); }

private:
    // A registered comparison of each item is an Or of conditions: what ends it depends on what is asked.
    Truth find(const RowValues& row, bool endsAtMatch, bool endsAtUnknown = false) const {
        if (itemsFirst_)
            for (const EvaluatorPtr& item : items_)
                item->value(row);
        const Variant value = value_->value(row);
        Truth found = false;
        for (const EvaluatorPtr& item : items_) {
            const Variant candidate = item->value(row);
            Truth same;
            if (!isUnknown(value, candidate)) same = compareBy(rule_, value, candidate) == 0;
            found = either(found, same);
            if (endsAtMatch && found == Truth(true)) break;
            if (endsAtUnknown && rule_ == Comparison::Function && !same) break;
        }
        return found;
    }

    Comparison rule_;
    EvaluatorPtr value_;
    std::vector<EvaluatorPtr> items_;
    bool itemsFirst_;
};

} // namespace

bool meets(Op comparison, int order) {
    switch (comparison) {
    case Op::Equal: return order == 0;
    case Op::NotEqual: return order != 0;
    case Op::Less: return order < 0;
    case Op::LessOrEqual: return order <= 0;
    case Op::Greater: return order > 0;
    default: return order >= 0;
    }
}

EvaluatorPtr makeNot(EvaluatorPtr operand) {
    return std::make_unique<NotCondition>(std::move(operand));
}

EvaluatorPtr makeIsNull(EvaluatorPtr operand, bool negated) {
    return std::make_unique<IsNullCondition>(std::move(operand), negated);
}

EvaluatorPtr makeJunction(bool isAnd, std::vector<EvaluatorPtr> operands) {
    return std::make_unique<JunctionCondition>(isAnd, std::move(operands));
}

EvaluatorPtr makeComparison(Op op, Comparison rule, EvaluatorPtr left, EvaluatorPtr right) {
    return std::make_unique<ComparisonCondition>(op, rule, std::move(left), std::move(right));
}

EvaluatorPtr makeBetween(Comparison rule, EvaluatorPtr value, EvaluatorPtr low, EvaluatorPtr high) {
    return std::make_unique<BetweenCondition>(rule, std::move(value), std::move(low), std::move(high));
}

EvaluatorPtr makeLike(EvaluatorPtr value, EvaluatorPtr pattern) {
    return std::make_unique<LikeCondition>(std::move(value), std::move(pattern));
}

EvaluatorPtr makeIn(Comparison rule, EvaluatorPtr value, std::vector<EvaluatorPtr> items, bool itemsFirst) {
    if (rule != Comparison::Function)
        if (EvaluatorPtr list = makeListCondition(value, items)) return list;
    return std::make_unique<InCondition>(rule, std::move(value), std::move(items), itemsFirst);
}

} // namespace jet
