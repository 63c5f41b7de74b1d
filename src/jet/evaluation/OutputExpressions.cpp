#include "jet/evaluation/OutputExpressions.h"

#include "base/RunTimeError.h"
#include "jet/binding/ExpressionBinder.h"
#include "jet/evaluation/OutputResolver.h"
#include "jet/model/Raise.h"

#include <algorithm>

namespace jet {

namespace {

constexpr mkl::Long expressionSyntax = 3075;
constexpr mkl::Long badBrackets = 3126;

QStringView pieceAt(QStringView text, const std::optional<mkl::ErrorPlace>& place) {
    if (!place) return text;
    const qsizetype begin = std::min(place->position, text.size());
    return text.sliced(begin).first(std::min(place->token.size(), text.size() - begin));
}

} // namespace

void bindToOutputs(Expression& expression, std::span<const OutputColumn> columns, mkl::Long aggregateError) {
    const OutputResolver resolver(columns);
    UnknownNames unknown; // stays empty: the resolver raises
    ExpressionBinder(resolver, unknown).bind(expression, {aggregateError, {}, {}});
}

void addColumnsOf(const Expression& expression, QList<int>& columns) {
    if (const auto* name = expression.as<Name>()) {
        const auto place = std::lower_bound(columns.cbegin(), columns.cend(), name->column);
        if (place == columns.cend() || *place != name->column) columns.insert(place, name->column);
    }
    for (const Expression* operand : operandsOf(expression))
        addColumnsOf(*operand, columns);
}

void readWithSyntaxError(mkl::Long number, QStringView text, const std::function<void()>& read) {
    const TextInWork inWork(text);
    try {
        read();
    } catch (const mkl::RunTimeError& error) {
        if (error.number() != expressionSyntax && error.number() != badBrackets) throw;
        const QStringView piece = pieceAt(text, error.place());
        raiseAt(number, piece, {excerpt(piece.isEmpty() ? text : text.sliced(piece.utf16() - text.utf16()))});
    }
}

} // namespace jet
