#pragma once
#include "dao/Substitute.h"
#include "dao/postgres/PostgresSchema.h"

#include <QHash>
#include <functional>

namespace dao {

/// Runs a statement that the server cannot express on copies of the rows of its tables, in an engine in memory that
/// calls the functions of the dialect themselves. What an action changes there is then changed on the server, row by
/// row. Nothing is kept between two runs.
class PostgresLocalRows final : public Substitute {
public:
    /// makeReader prepares a query that notices when its tables have changed.
    PostgresLocalRows(Connection& server, const PostgresSchema& schema,
                      std::function<std::shared_ptr<Statement>(const QByteArray&)> makeReader)
        : server_(server)
        , schema_(schema)
        , makeReader_(std::move(makeReader)) {}

    const jet::Target& target() const override;
    std::shared_ptr<Statement> prepare(const QByteArray& native, Access access) override;
    std::shared_ptr<Statement> prepareLenient(const QByteArray& native) override;
    /// The tables have changed.
    void forgetTables();

private:
    friend class LocalStatement;

    Connection& memory();
    std::vector<const jet::Table*> tablesIn(const QByteArray& native) const;
    /// False where the table is no longer what it was.
    bool load(const jet::Table& table);
    std::shared_ptr<Statement> reader(const jet::Table& table);
    void empty(const jet::Table& table);

    Connection& server_;
    const PostgresSchema& schema_;
    std::function<std::shared_ptr<Statement>(const QByteArray&)> makeReader_;
    mutable std::shared_ptr<Connection> memory_;
    QHash<QString, std::shared_ptr<Statement>> readers_; ///< by table
};

} // namespace dao
