#include "dao/Substitute.h"

#include <type_traits>

namespace dao {

namespace {

class SubstitutedStatement final : public Statement {
public:
    SubstitutedStatement(Connection& connection, std::shared_ptr<Statement> statement, Access access, WriteFor write)
        : connection_(connection)
        , statement_(std::move(statement))
        , access_(access)
        , write_(std::move(write)) {}

    bool readSome(std::span<const StoredValue> parameters, RowStore& rows, qsizetype limit) override {
        return either([&](Statement& statement) { return statement.readSome(parameters, rows, limit); });
    }
    qint64 run(std::span<const StoredValue> parameters) override {
        return either([&](Statement& statement) { return statement.run(parameters); });
    }
    bool takeStale() override { return statement_ && statement_->takeStale(); }

private:
    template<class Action>
    std::invoke_result_t<Action, Statement&> either(Action&& action) {
        if (statement_) {
            try {
                return action(*statement_);
            } catch (const NotExpressible&) {
            }
        }
        if (!substitute_) {
            Substitute& other = *connection_.substitute();
            substitute_ = other.prepare(write_(other.target()), access_);
        }
        return action(*substitute_);
    }

    Connection& connection_;
    std::shared_ptr<Statement> statement_; ///< nothing where the engine cannot express it at all
    std::shared_ptr<Statement> substitute_;
    Access access_;
    WriteFor write_;
};

} // namespace

std::shared_ptr<Statement> prepareOrSubstitute(Connection& connection, const QByteArray& native, Access access,
                                               const QList<jet::ColumnType>& types, WriteFor write) {
    if (!connection.substitute()) return connection.prepare(native, access);
    std::shared_ptr<Statement> statement;
    try {
        statement = connection.prepare(native, access);
        statement->requireTypes(types);
    } catch (const NotExpressible&) {
        statement.reset();
    }
    return std::make_shared<SubstitutedStatement>(connection, std::move(statement), access, std::move(write));
}

} // namespace dao
