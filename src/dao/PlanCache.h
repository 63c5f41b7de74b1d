#pragma once
#include "dao/Columns.h"
#include "dao/Connection.h"
#include "dao/LruCache.h"
#include "dao/ReadAhead.h"
#include "dao/Substitute.h"
#include "jet/model/Plan.h"
#include "jet/syntax/Shape.h"

#include <QSet>
#include <memory>
#include <vector>

namespace dao {

/// A statement translated and prepared, ready for all texts of its shape.
struct Translation {
    jet::Plan plan;
    std::shared_ptr<const Columns> columns;
    std::shared_ptr<Statement> statement;
    std::shared_ptr<Statement> lenientStatement;          ///< leaves failing rows out; made when first needed
    std::function<jet::Plan(const jet::Target&)> compile; ///< the same statement for another engine
};

/// A query translated for a dynaset. Without statements where its rows cannot be edited.
struct DynasetTranslation {
    jet::DynasetPlan plan;
    std::shared_ptr<const Columns> columns;
    std::shared_ptr<Statement> keys;
    std::shared_ptr<Statement> row;
};

/// The translations of a connection by shape, so that a statement which differs only in its literals is neither
/// parsed nor prepared again. Whoever sees the tables change clears it.
class PlanCache {
public:
    /// From the cache, or translated from the text.
    std::shared_ptr<Translation> translation(const jet::Shape& shape, QStringView text, Connection& connection);
    std::shared_ptr<DynasetTranslation> dynaset(const jet::Shape& shape, QStringView text, Connection& connection);
    /// Shapes of statements that ask the engine for a find, whose criteria have been found to be such.
    bool isKnownFind(const QString& shape) const { return knownFinds_.contains(shape); }
    void addKnownFind(const QString& shape);
    void clear();

    ReadAhead& readAhead() { return readAhead_; }
    const ReadAhead& readAhead() const { return readAhead_; }

    /// How often a statement had to be translated since the database was opened.
    qint64 compilations() const { return compilations_; }
    qsizetype size() const { return byShape_.size(); }

    static constexpr qsizetype capacity = 256;

private:
    // Of one shape, one for each set of literals that could not be lifted.
    template<class Made>
    using ByShape = LruCache<QString, std::vector<std::shared_ptr<Made>>>;
    template<class Made, class Translate>
    std::shared_ptr<Made> cached(ByShape<Made>& cache, const jet::Shape& shape, Connection& connection,
                                 Translate&& translate);

    ByShape<Translation> byShape_{capacity};
    ByShape<DynasetTranslation> dynasets_{capacity};
    QSet<QString> knownFinds_;
    ReadAhead readAhead_;
    qint64 compilations_ = 0;
};

/// The values for the parameters of the plan, taken from the literals of a text.
using Parameters = QVarLengthArray<StoredValue, 8>;
Parameters parameterValues(const QList<jet::Parameter>& parameters, const jet::Shape& shape);
inline Parameters parameterValues(const jet::Plan& plan, const jet::Shape& shape) {
    return parameterValues(plan.parameters, shape);
}

} // namespace dao
