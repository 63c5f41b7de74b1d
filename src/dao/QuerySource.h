#pragma once
#include "base/RunTimeError.h"
#include "dao/PlanCache.h"

#include <limits>

namespace dao {

/// A SELECT that is run once or several times. Copies share the connection and its translations.
class QuerySource {
public:
    QuerySource(std::shared_ptr<Connection> connection, std::shared_ptr<PlanCache> plans, QString sql);
    /// All rows and columns of a table; name as declared.
    static QuerySource ofTable(std::shared_ptr<Connection> connection, std::shared_ptr<PlanCache> plans,
                               const QString& name);

    const std::shared_ptr<Connection>& connection() const { return connection_; }
    const std::shared_ptr<PlanCache>& plans() const { return plans_; }
    const QString& sql() const { return sql_; }
    /// The table if these are all its rows and columns, else empty.
    const QString& wholeTable() const { return wholeTable_; }

    /// Of the result, without running the statement.
    std::shared_ptr<const Columns> columns() const;

    struct Result {
        std::shared_ptr<const Columns> columns;
        bool complete; ///< false if there may be more rows than the limit
    };
    /// Puts the rows into the store, about limit of them if what follows would have its own cost. 3219 if it is no
    /// SELECT.
    Result read(RowStore& rows, qsizetype limit = std::numeric_limits<qsizetype>::max()) const;

    /// The result of attempt(shape), which gives it together with the statement that it ran. Where the translation
    /// turns out to be older than the tables it is tried again with a new one. Nobody is asked for their state
    /// beforehand, which would cost more than most queries; the engine notices it when it runs the statement.
    template<class Attempt>
    auto run(Attempt&& attempt) const {
        const jet::Shape shape = jet::shapeOf(sql_);
        for (;;) {
            try {
                auto [result, statement] = attempt(shape);
                if (!statement || !isStale(*statement)) return result;
            } catch (const mkl::RunTimeError& error) {
                if (!isOfOldTables(error)) throw;
            }
            plans_->clear();
        }
    }

private:
    bool isStale(Statement& statement) const;
    bool isOfOldTables(const mkl::RunTimeError& error) const;

    std::shared_ptr<Connection> connection_;
    std::shared_ptr<PlanCache> plans_;
    QString sql_;
    QString wholeTable_;
};

} // namespace dao
