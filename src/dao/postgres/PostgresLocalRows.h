#pragma once
#include "dao/Substitute.h"
#include "dao/postgres/PostgresSchema.h"

namespace dao {

/// Runs a statement that the server cannot express on copies of the rows of its tables, in an engine in memory that
/// calls the functions of the dialect themselves. What an action changes there is then changed on the server, row by
/// row. Nothing is kept between two runs.
class PostgresLocalRows final : public Substitute {
public:
    PostgresLocalRows(Connection& server, const PostgresSchema& schema)
        : server_(server)
        , schema_(schema) {}

    const jet::Target& target() const override;
    std::shared_ptr<Statement> prepare(const QByteArray& native, Access access) override;
    std::shared_ptr<Statement> prepareLenient(const QByteArray& native) override;
    /// The tables have changed.
    void forgetTables() { memory_.reset(); }

private:
    friend class LocalStatement;

    Connection& memory();
    std::vector<const jet::Table*> tablesIn(const QByteArray& native) const;
    void load(const jet::Table& table);
    void empty(const jet::Table& table);

    Connection& server_;
    const PostgresSchema& schema_;
    mutable std::shared_ptr<Connection> memory_;
};

} // namespace dao
