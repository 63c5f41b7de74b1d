#include "jet/evaluation/Evaluator.h"

#include "base/DateTime.h"
#include "base/RunTimeError.h"
#include "jet/binding/LazyCalls.h"
#include "jet/binding/Typing.h"
#include "jet/evaluation/Conditions.h"
#include "jet/evaluation/TextConditions.h"
#include "jet/functions/Functions.h"

#include <QVarLengthArray>
#include <cmath>

namespace jet {

using Type = Variant::Type;

namespace {

constexpr mkl::Long numericOverflow = 3349;

class ConstantValue final : public Evaluator {
public:
    explicit ConstantValue(Variant value)
        : value_(std::move(value)) {}

    Variant value(const RowValues&) const override { return value_; }
    const Variant* constant() const override { return &value_; }

private:
    Variant value_;
};

class ColumnValue final : public Evaluator {
public:
    ColumnValue(int column, ColumnType type)
        : column_(column)
        , type_(type) {}

    Variant value(const RowValues& row) const override { return row.value(column_); }
    int textColumn() const override { return type_ == ColumnType::Text ? column_ : -1; }

private:
    int column_;
    ColumnType type_;
};

class UnaryOperation final : public Evaluator {
public:
    using Implementation = Variant (*)(const Variant&);
    UnaryOperation(Implementation implementation, EvaluatorPtr operand)
        : implementation_(implementation)
        , operand_(std::move(operand)) {}

    Variant value(const RowValues& row) const override { return asStored(implementation_(operand_->value(row))); }

private:
    Implementation implementation_;
    EvaluatorPtr operand_;
};

class BinaryOperation final : public Evaluator {
public:
    using Implementation = Variant (*)(const Variant&, const Variant&);
    BinaryOperation(Implementation implementation, EvaluatorPtr left, EvaluatorPtr right)
        : implementation_(implementation)
        , left_(std::move(left))
        , right_(std::move(right)) {}

    Variant value(const RowValues& row) const override {
        const Variant left = left_->value(row);
        return asStored(implementation_(left, right_->value(row)));
    }

private:
    Implementation implementation_;
    EvaluatorPtr left_, right_;
};

using Evaluators = std::vector<EvaluatorPtr>;

class FunctionValue final : public Evaluator {
public:
    FunctionValue(Implementation implementation, Evaluators arguments)
        : implementation_(implementation)
        , arguments_(std::move(arguments)) {}

    Variant value(const RowValues& row) const override {
        QVarLengthArray<Variant, 6> values;
        for (const EvaluatorPtr& argument : arguments_)
            values.append(argument->value(row));
        return asStored(implementation_({values.constData(), static_cast<size_t>(values.size())}));
    }

private:
    Implementation implementation_;
    Evaluators arguments_;
};

class LazyValue final : public Evaluator {
public:
    LazyValue(LazyKind kind, Evaluators arguments)
        : kind_(kind)
        , arguments_(std::move(arguments)) {}

    Variant value(const RowValues& row) const override {
        const Evaluator* chosen = kind_ == LazyKind::Choose ? byNumber(row) : byCondition(row);
        return chosen ? chosen->value(row) : Variant();
    }

private:
    // Conditions and results by turns; of IIf a result without a condition at the end.
    const Evaluator* byCondition(const RowValues& row) const {
        for (size_t i = 0; i + 1 < arguments_.size(); i += 2)
            if (arguments_[i]->isTrue(row)) return arguments_[i + 1].get();
        return arguments_.size() % 2 == 1 ? arguments_.back().get() : nullptr;
    }
    const Evaluator* byNumber(const RowValues& row) const {
        const mkl::Long number = arguments_[0]->value(row).toLong();
        const bool isThere = number >= 1 && static_cast<size_t>(number) < arguments_.size();
        return isThere ? arguments_[static_cast<size_t>(number)].get() : nullptr;
    }

    LazyKind kind_;
    Evaluators arguments_;
};

class NoRow final : public RowValues {
public:
    Variant value(int) const override { return {}; }
};

BinaryOperation::Implementation implementationOf(Op op) {
    switch (op) {
    case Op::Power: return power;
    case Op::Multiply: return multiply;
    case Op::Divide: return divide;
    case Op::IntegerDivide: return intDivide;
    case Op::Modulo: return modulo;
    case Op::Add: return add;
    case Op::Subtract: return subtract;
    case Op::Concatenate: return concat;
    case Op::Xor: return logicalXor;
    case Op::Equivalent: return logicalEqv;
    default: return logicalImp;
    }
}

// Makes the nodes; each says whether all below it is constant.
class Preparation {
public:
    Prepared prepare(const Expression& expression) {
        const bool before = std::exchange(isConstant_, true);
        EvaluatorPtr made = std::visit(Overloaded{[&](const Name& name) { return column(name, expression.type); },
                                                  [&](const auto& node) { return make(node); }},
                                       expression.node);
        if (isConstant_ && !expression.as<Literal>() && !expression.as<Constant>()) made = computed(std::move(made));
        const bool isConstant = std::exchange(isConstant_, before && isConstant_);
        return {std::move(made), isConstant};
    }

private:
    EvaluatorPtr part(const ExpressionPtr& expression) { return prepare(*expression).evaluator; }

    Evaluators parts(const ExpressionList& expressions) {
        Evaluators prepared;
        for (const ExpressionPtr& expression : expressions)
            prepared.push_back(part(expression));
        return prepared;
    }

    static EvaluatorPtr computed(EvaluatorPtr evaluator) {
        try {
            return std::make_unique<ConstantValue>(evaluator->value(NoRow()));
        } catch (const mkl::RunTimeError&) {
            return evaluator; // raised again when it is needed
        }
    }

    EvaluatorPtr column(const Name& name, ColumnType type) {
        isConstant_ = false;
        return std::make_unique<ColumnValue>(name.column, type);
    }

    EvaluatorPtr make(const Literal& literal) {
        return std::make_unique<ConstantValue>(asStored(literal.negated ? negate(literal.value) : literal.value));
    }
    EvaluatorPtr make(const Constant& constant) { return std::make_unique<ConstantValue>(constant.value); }
    EvaluatorPtr make(const Negation& node) { return std::make_unique<UnaryOperation>(negate, part(node.operand)); }
    EvaluatorPtr make(const Not& node) { return makeNot(part(node.operand)); }
    EvaluatorPtr make(const IsNull& node) { return makeIsNull(part(node.value), node.negated); }
    EvaluatorPtr make(const Junction& node) { return makeJunction(node.isAnd, parts(node.operands)); }

    // Binders let no subquery pass that stands among columns of a result.
    [[noreturn]] EvaluatorPtr make(const Subquery&) { mkl::throwError(3075, {QStringLiteral("SELECT")}); }

    EvaluatorPtr make(const Binary& node) {
        EvaluatorPtr left = part(node.left), right = part(node.right);
        if (EvaluatorPtr fast = makeTextCondition(node, *left, *right)) return fast;
        if (isComparison(node.op)) return makeComparison(node.op, node.comparison, std::move(left), std::move(right));
        if (node.op == Op::Like) return makeLike(std::move(left), std::move(right));
        return std::make_unique<BinaryOperation>(implementationOf(node.op), std::move(left), std::move(right));
    }

    EvaluatorPtr make(const Between& node) {
        const bool native = isPlain(*node.value) && isPlain(*node.low) && isPlain(*node.high);
        EvaluatorPtr value = part(node.value), low = part(node.low), high = part(node.high);
        return makeBetween(native ? node.comparison : Comparison::Function, std::move(value), std::move(low),
                           std::move(high));
    }

    EvaluatorPtr make(const In& node) {
        constexpr size_t fewItems = 2;
        EvaluatorPtr value = part(node.value);
        const bool valueIsConstant = std::exchange(isConstant_, true);
        Evaluators items = parts(node.items);
        const bool itemsFirst = isConstant_ && items.size() > fewItems && node.comparison != Comparison::Function;
        isConstant_ = isConstant_ && valueIsConstant;
        return makeIn(node.comparison, std::move(value), std::move(items), itemsFirst);
    }

    EvaluatorPtr make(const Call& node) {
        if (!node.function->deterministic) isConstant_ = false;
        Evaluators arguments = parts(node.arguments);
        if (node.function->lazy) return std::make_unique<LazyValue>(lazyKindOf(*node.function), std::move(arguments));
        return std::make_unique<FunctionValue>(node.function->implementation, std::move(arguments));
    }

    bool isConstant_ = true;
};

bool hasSurrogates(QStringView text) {
    for (const QChar c : text)
        if (c.isSurrogate()) return true;
    return false;
}

Variant storedCurrency(const Variant& value) {
    constexpr qint64 exactInDouble = qint64(1) << 53;
    const qint64 amount = value.toCurrency();
    const bool isExact = amount >= -exactInDouble && amount <= exactInDouble &&
                         std::nearbyint(value.toDouble() * 10000.0) == static_cast<double>(amount);
    if (!isExact) mkl::throwError(numericOverflow);
    return value;
}

Variant storedDate(const Variant& value) {
    const QString iso = mkl::isoFromDate(value.toDouble());
    const auto date = mkl::dateFromIso(iso);
    return date ? Variant::date(*date) : Variant(iso);
}

} // namespace

Prepared prepare(const Expression& expression) {
    return Preparation().prepare(expression);
}

Variant asStored(Variant value) {
    switch (value.type()) {
    case Type::Currency: return storedCurrency(value);
    case Type::Date: return storedDate(value);
    case Type::Double: return std::isnan(value.toDouble()) ? Variant() : value;
    case Type::Text: {
        const QString text = value.toText();
        return hasSurrogates(text) ? Variant(QString::fromUtf8(text.toUtf8())) : value;
    }
    default: return value;
    }
}

} // namespace jet
