#include "dao/QuerySource.h"

#include "dao/Errors.h"

using namespace Qt::StringLiterals;

namespace dao {

QuerySource::QuerySource(std::shared_ptr<Connection> connection, std::shared_ptr<PlanCache> plans, QString sql)
    : connection_(std::move(connection))
    , plans_(std::move(plans))
    , sql_(std::move(sql)) {}

QuerySource QuerySource::ofTable(std::shared_ptr<Connection> connection, std::shared_ptr<PlanCache> plans,
                                 const QString& name) {
    QuerySource result(std::move(connection), std::move(plans), u"SELECT * FROM ["_s + name + u']');
    result.wholeTable_ = name;
    return result;
}

std::shared_ptr<const Columns> QuerySource::columns() const {
    return plans_->translation(jet::shapeOf(sql_), sql_, *connection_)->columns;
}

QuerySource::Result QuerySource::read(RowStore& rows, qsizetype limit) const {
    return run([&](const jet::Shape& shape) {
        const auto translation = plans_->translation(shape, sql_, *connection_);
        const jet::Plan& plan = translation->plan;
        if (plan.kind != jet::StatementKind::Select) mkl::throwError(err::InvalidOperation);
        rows.clear();
        if (plans_->readAhead().answer(shape, sql_, *connection_, rows))
            return std::pair(Result{translation->columns, true}, std::shared_ptr<Statement>());
        const bool complete = translation->statement->readSome(parameterValues(plan, shape), rows, limit);
        return std::pair(Result{translation->columns, complete}, translation->statement);
    });
}

bool QuerySource::isStale(Statement& statement) const {
    return statement.takeStale() && connection_->refreshSchema();
}

bool QuerySource::isOfOldTables(const mkl::RunTimeError& error) const {
    return error.number() == err::InternalError && connection_->refreshSchema();
}

} // namespace dao
