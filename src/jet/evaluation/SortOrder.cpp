#include "jet/evaluation/SortOrder.h"

#include "jet/evaluation/OutputExpressions.h"
#include "jet/functions/SortKey.h"
#include "jet/model/Raise.h"
#include "jet/syntax/SelectParser.h"

#include <algorithm>

namespace jet {

namespace {

constexpr mkl::Long sortSyntax = 3138;
constexpr mkl::Long aggregateInSort = 3097;

struct Term {
    EvaluatorPtr value;
    bool descending = false;
};

// A bare number is the place of a column, as behind ORDER BY.
bool isPlace(const Expression& expression) {
    const auto* const literal = expression.as<Literal>();
    return literal && literal->value.type() == Variant::Type::Int;
}

EvaluatorPtr columnAt(const Expression& expression, size_t count) {
    const Literal& literal = *expression.as<Literal>();
    const mkl::Long place = literal.value.toLong();
    if (literal.negated || place < 1 || static_cast<size_t>(place) > count)
        raiseAt(sortSyntax, expression.text, {expression.text.toString()});
    Expression column;
    column.node = Name{{}, {}, 0, place - 1, nullptr};
    return prepare(column).evaluator;
}

} // namespace

struct SortOrder::Body {
    std::vector<Term> terms;
};

SortOrder::SortOrder(std::shared_ptr<const Body> body)
    : body_(std::move(body)) {}

SortOrder SortOrder::parse(QStringView text, std::span<const OutputColumn> columns) {
    auto body = std::make_shared<Body>();
    readWithSyntaxError(sortSyntax, text, [&] {
        TokenStream tokens(text);
        if (tokens.atEnd()) return;
        std::vector<OrderItem> items = SelectParser(tokens).parseOrderList();
        if (!tokens.atEnd()) tokens.fail(sortSyntax);
        for (OrderItem& item : items) {
            if (isPlace(*item.expression)) {
                body->terms.push_back({columnAt(*item.expression, columns.size()), item.descending});
                continue;
            }
            bindToOutputs(*item.expression, columns, aggregateInSort);
            body->terms.push_back({prepare(*item.expression).evaluator, item.descending});
        }
    });
    return SortOrder(std::move(body));
}

void SortOrder::sort(QList<qsizetype>& rows, RowReader& reader) const {
    const size_t count = body_->terms.size();
    if (count == 0) return;
    std::vector<SortKey> keys; // of each row one for each term
    keys.reserve(static_cast<size_t>(rows.size()) * count);
    for (const qsizetype row : rows) {
        reader.moveTo(row);
        for (const Term& term : body_->terms)
            keys.push_back(sortKeyOf(term.value->value(reader)));
    }
    std::vector<size_t> places(static_cast<size_t>(rows.size()));
    for (size_t place = 0; place < places.size(); ++place)
        places[place] = place;
    std::ranges::stable_sort(places, [&](size_t a, size_t b) {
        for (size_t term = 0; term < count; ++term) {
            const int order = compareSortKeys(keys[a * count + term], keys[b * count + term]);
            if (order != 0) return (order < 0) != body_->terms[term].descending;
        }
        return false;
    });
    const QList<qsizetype> before = rows;
    for (size_t place = 0; place < places.size(); ++place)
        rows[static_cast<qsizetype>(place)] = before[static_cast<qsizetype>(places[place])];
}

} // namespace jet
