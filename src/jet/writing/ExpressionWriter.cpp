#include "jet/writing/ExpressionWriter.h"

#include "jet/binding/LazyCalls.h"
#include "jet/binding/Typing.h"
#include "jet/functions/Aggregates.h"
#include "jet/model/Raise.h"
#include "jet/writing/NativeOperators.h"
#include "jet/writing/RowKeys.h"
#include "jet/writing/SubqueryWriter.h"

namespace jet {

namespace {

constexpr mkl::Long tooComplex = 3360;
constexpr qsizetype maximalNativeSize = 1'000'000;

const QByteArray nullText = QByteArrayLiteral("NULL");

const char* conversionTo(ColumnType type) {
    switch (type) {
    case ColumnType::Boolean: return "mkl_to_boolean";
    case ColumnType::Int: return "mkl_to_long";
    case ColumnType::Double: return "mkl_to_double";
    case ColumnType::Currency: return "mkl_to_currency";
    case ColumnType::Date: return "mkl_to_date";
    default: return "mkl_to_text";
    }
}

bool isNumber(ColumnType type) {
    return type == ColumnType::Boolean || type == ColumnType::Int || type == ColumnType::Double ||
           type == ColumnType::Currency;
}

// Whether the engine gives it as one of its own conditions.
bool isNativeCondition(const Expression& expression) {
    if (const auto* binary = expression.as<Binary>())
        return isComparison(binary->op) && binary->comparison != Comparison::Function;
    if (const auto* between = expression.as<Between>())
        return between->comparison != Comparison::Function && isPlain(*between->value) && isPlain(*between->low) &&
               isPlain(*between->high);
    if (const auto* subquery = expression.as<Subquery>()) return isNativeCondition(*subquery);
    return expression.as<Not>() || expression.as<Junction>() || expression.as<In>() || expression.as<IsNull>();
}

// Whether a registered function computes it, which tells the next one the type by itself.
bool isRegisteredCall(const Expression& expression) {
    if (expression.as<Negation>() || (expression.as<Binary>() && !isNativeCondition(expression))) return true;
    const auto* const call = expression.as<Call>();
    return call && call->function && !call->function->lazy;
}

// Halves all the way down: engines limit the depth of an expression, hosts do not limit the length of a filter.
QByteArray joined(const QByteArrayList& terms, qsizetype begin, qsizetype end, const char* separator,
                  const char* function = "") {
    if (end - begin == 1) return terms[begin];
    const qsizetype middle = begin + (end - begin) / 2;
    return function + ('(' + joined(terms, begin, middle, separator, function)) + separator +
           joined(terms, middle, end, separator, function) + ')';
}

// The operands of a & b & c: in whatever pairs they are joined, the text is the same.
void addConcatenated(const Expression& expression, std::vector<const Expression*>& operands) {
    const auto* const binary = withoutAlias(expression).as<Binary>();
    if (!binary || binary->op != Op::Concatenate) return operands.push_back(&expression);
    addConcatenated(*binary->left, operands);
    addConcatenated(*binary->right, operands);
}

const Binary* likeOfColumn(const Expression& expression) {
    const auto* const binary = expression.as<Binary>();
    if (!binary || binary->op != Op::Like) return nullptr;
    const Expression& pattern = withoutAlias(*binary->right);
    const bool constant = pattern.as<Literal>() && pattern.type == ColumnType::Text;
    return constant && withoutAlias(*binary->left).as<Name>() ? binary : nullptr;
}

QByteArray checkedSize(QByteArray native, const Expression& expression) {
    if (native.size() > maximalNativeSize) raiseAt(tooComplex, expression.text);
    return native;
}

} // namespace

bool storesAsIs(ColumnType from, ColumnType to) {
    if (from == to || to == ColumnType::Unknown || to == ColumnType::Binary) return true;
    const bool fromWhole = from == ColumnType::Boolean || from == ColumnType::Int;
    return fromWhole && (to == ColumnType::Int || to == ColumnType::Double || to == ColumnType::Currency);
}

int ParameterList::numberOf(const Literal& literal) {
    int& number = numbers_[{literal.index, literal.negated}];
    if (number > 0) return number;
    parameters_.append({literal.index, literal.negated});
    return number = static_cast<int>(parameters_.size());
}

QByteArray ExpressionWriter::value(const Expression& expression) {
    return checkedSize(writeValue(withoutAlias(expression)), expression);
}

QByteArray ExpressionWriter::condition(const Expression& expression) {
    const Expression& target = withoutAlias(expression);
    if (isNativeCondition(target)) return checkedSize(nativeCondition(target), expression);
    if (const Binary* const like = likeOfColumn(target)) return columnLike(*like);
    const bool number = isNumber(target.type) || target.isNull();
    return target_.condition(number ? value(target) : call("mkl_truth", {&target}));
}

QByteArray ExpressionWriter::writeValue(const Expression& expression) {
    if (isNativeCondition(expression)) return target_.yesNo(nativeCondition(expression));
    if (const auto* node = expression.as<Literal>())
        return target_.parameter(parameters_.numberOf(*node), expression.type);
    if (const auto* node = expression.as<Constant>())
        return node->value.isNull() ? nullText : QByteArray::number(node->value.toLong());
    if (const auto* node = expression.as<Name>()) return column(*node);
    if (const auto* node = expression.as<Negation>()) return call("mkl_negate", {node->operand.get()});
    if (const auto* node = expression.as<Binary>())
        return node->op == Op::Concatenate ? concatenation(expression)
                                           : call(functionOf(node->op), {node->left.get(), node->right.get()});
    if (const auto* node = expression.as<Between>())
        return call("mkl_between", {node->value.get(), node->low.get(), node->high.get()});
    if (const auto* node = expression.as<Subquery>()) return subqueryValue(*node, expression.type);
    return call(std::get<Call>(expression.node), expression.type);
}

QByteArray ExpressionWriter::nativeCondition(const Expression& expression) {
    if (const auto* node = expression.as<Not>()) return "(NOT " + condition(*node->operand) + ')';
    if (const auto* node = expression.as<Junction>()) return junction(*node);
    if (const auto* node = expression.as<Binary>()) return comparison(*node);
    if (const auto* node = expression.as<Between>()) return between(*node);
    if (const auto* node = expression.as<IsNull>())
        return '(' + value(*node->value) + (node->negated ? " IS NOT NULL)" : " IS NULL)");
    if (const auto* node = expression.as<Subquery>()) return subqueryCondition(*node);
    return in(std::get<In>(expression.node));
}

// Filters that hosts leave open ask for '*': all rows but those with Null, told without a call for each of them.
QByteArray ExpressionWriter::columnLike(const Binary& like) {
    const QByteArray column = value(*like.left), pattern = value(*like.right);
    return "(CASE WHEN " + pattern + " = '*' THEN " + column + " IS NOT NULL OR NULL ELSE " +
           target_.condition(call(functionOf(Op::Like), {like.left.get(), like.right.get()})) + " END)";
}

QByteArray ExpressionWriter::conjunction(const std::vector<const Expression*>& terms) {
    QByteArrayList conditions;
    for (const Expression* term : terms)
        conditions.append(condition(*term));
    return conditions.isEmpty() ? QByteArray() : joined(conditions, 0, conditions.size(), " AND ");
}

QByteArray ExpressionWriter::comparable(const Expression& expression) {
    return isCollated(expression.type) && !expression.isNull() ? target_.collated(value(expression))
                                                               : value(expression);
}

QByteArray ExpressionWriter::key(const Expression& expression) {
    // A bare number would be taken for the place of a column.
    return withoutAlias(expression).as<Constant>() ? nullText : comparable(expression);
}

QByteArray ExpressionWriter::stored(const Expression& expression, ColumnType type) {
    if (expression.isNull() || storesAsIs(expression.type, type)) return value(expression);
    return conversionTo(type) + ('(' + operand(expression) + ')');
}

QByteArray ExpressionWriter::column(const Name& name) {
    const ExpressionWriter* writer = this;
    for (int level = name.level; level > 0; --level)
        writer = writer->outer_;
    const Scope& scope = writer->scope_;
    const QByteArray written = target_.name(scope[name.source].name) + '.' + target_.name(scope.column(name).name);
    const bool tellsItsType = scope[name.source].derived && scope.column(name).type == ColumnType::Unknown;
    return tellsItsType ? "mkl_unpack(" + written + ')' : written;
}

QByteArray ExpressionWriter::operand(const Expression& expression) {
    const Expression& target = withoutAlias(expression);
    return isRegisteredCall(target) ? value(target) : target_.operand(value(target), target.type);
}

QByteArray ExpressionWriter::call(const char* nativeName, std::initializer_list<const Expression*> operands) {
    QByteArrayList written;
    for (const Expression* expression : operands)
        written.append(operand(*expression));
    return nativeName + ('(' + written.join(", ") + ')');
}

QByteArray ExpressionWriter::concatenation(const Expression& expression) {
    std::vector<const Expression*> operands;
    addConcatenated(expression, operands);
    QByteArrayList written;
    for (const Expression* part : operands)
        written.append(operand(*part));
    return joined(written, 0, written.size(), ", ", functionOf(Op::Concatenate));
}

QByteArray ExpressionWriter::call(const Call& call, ColumnType type) {
    if (call.aggregate) return aggregate(call);
    if (call.function->lazy) return lazy(call, type);
    QByteArrayList arguments;
    for (const ExpressionPtr& argument : call.arguments)
        arguments.append(operand(*argument));
    return call.function->nativeName + ('(' + arguments.join(", ") + ')');
}

QByteArray ExpressionWriter::aggregate(const Call& call) {
    if (call.star) return "count(*)";
    const Aggregate& aggregate = *call.aggregate;
    const Expression& argument = *call.arguments.front();
    QByteArray written;
    if (aggregate.ordered) return aggregate.nativeName + ('(' + operand(argument) + rowKeys() + ')');
    if (aggregate.numeric)
        written = stored(argument, isNumber(argument.type) ? argument.type : ColumnType::Double);
    else
        written = comparable(argument);
    return aggregate.nativeName + ('(' + forcedInside(std::move(written), argument) + ')');
}

// What gives the rows of all tables of the FROM clause an order.
QByteArray ExpressionWriter::rowKeys() {
    QByteArray keys;
    for (const Scope::Source& source : scope_.sources())
        if (!source.derived)
            for (const RowKey& key : rowKeysOf(source, target_))
                keys += ", " + target_.operand(key.native, key.type);
    return keys;
}

QByteArray ExpressionWriter::lazy(const Call& call, ColumnType type) {
    const ExpressionList& arguments = call.arguments;
    const auto result = [&](const Expression& expression) {
        return type == ColumnType::Unknown ? operand(expression) : value(expression);
    };
    QByteArray native = "CASE";
    switch (lazyKindOf(*call.function)) {
    case LazyKind::IIf:
        native += " WHEN " + condition(*arguments[0]);
        native += " THEN " + result(*arguments[1]);
        native += " ELSE " + result(*arguments[2]);
        break;
    case LazyKind::Choose:
        native += " mkl_clng(" + operand(*arguments[0]) + ')';
        for (size_t i = 1; i < arguments.size(); ++i)
            native += " WHEN " + QByteArray::number(qulonglong(i)) + " THEN " + result(*arguments[i]);
        break;
    case LazyKind::Switch:
        for (size_t i = 0; i < arguments.size(); i += 2) {
            native += " WHEN " + condition(*arguments[i]);
            native += " THEN " + result(*arguments[i + 1]);
        }
    }
    return native + " END";
}

QByteArray ExpressionWriter::compared(const Expression& expression, Comparison comparison) {
    return comparison == Comparison::Collated ? comparable(expression) : value(expression);
}

QByteArray ExpressionWriter::comparison(const Binary& binary) {
    const QByteArray left = compared(*binary.left, binary.comparison);
    return '(' + left + nativeComparison(binary.op) + compared(*binary.right, binary.comparison) + ')';
}

// The bounds may stand in either order.
QByteArray ExpressionWriter::between(const Between& between) {
    const QByteArray value = compared(*between.value, between.comparison);
    const QByteArray low = compared(*between.low, between.comparison);
    const QByteArray high = compared(*between.high, between.comparison);
    const auto within = [&value](const QByteArray& from, const QByteArray& to) {
        return '(' + value + " >= " + from + " AND " + value + " <= " + to + ')';
    };
    return '(' + within(low, high) + " OR " + within(high, low) + ')';
}

QByteArray ExpressionWriter::in(const In& in) {
    const QByteArray value = compared(*in.value, in.comparison);
    QByteArrayList items;
    for (const ExpressionPtr& item : in.items) {
        if (in.comparison == Comparison::Function)
            items.append(target_.condition(call("mkl_equal", {in.value.get(), item.get()})));
        else
            items.append(compared(*item, in.comparison));
    }
    if (in.comparison == Comparison::Function) return joined(items, 0, items.size(), " OR ");
    return '(' + value + " IN (" + items.join(", ") + "))";
}

QByteArray ExpressionWriter::junction(const Junction& junction) {
    QByteArrayList conditions;
    for (const ExpressionPtr& operand : junction.operands)
        conditions.append(condition(*operand));
    return joined(conditions, 0, conditions.size(), junction.isAnd ? " AND " : " OR ");
}

} // namespace jet
