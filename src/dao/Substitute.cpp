#include "dao/Substitute.h"

#include "base/Texts.h"
#include "dao/Errors.h"

#include <algorithm>
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
    bool takeStale() override {
        const bool isStale = statement_ && statement_->takeStale();
        return (substitute_ && substitute_->takeStale()) || isStale;
    }

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

/// Where the whole action fails, its rows are tried one by one.
class LenientStatement final : public Statement {
public:
    LenientStatement(Connection& connection, QByteArray strict, WriteFor write)
        : connection_(connection)
        , strict_(std::move(strict))
        , write_(std::move(write)) {}

    bool readSome(std::span<const StoredValue> parameters, RowStore& /*rows*/, qsizetype /*limit*/) override {
        run(parameters);
        return true;
    }
    qint64 run(std::span<const StoredValue> parameters) override {
        try {
            if (!statement_) statement_ = connection_.prepare(strict_, Access::Write);
            return statement_->run(parameters);
        } catch (const NotExpressible&) {
        } catch (const mkl::RunTimeError& error) {
            if (concernsAllRows(error.number())) throw; // an internal one: of other tables
            connection_.transaction().requireSound();
        }
        Substitute& other = *connection_.substitute();
        return other.prepareLenient(write_(other.target()))->run(parameters);
    }
    bool takeStale() override { return false; }

private:
    Connection& connection_;
    QByteArray strict_;
    std::shared_ptr<Statement> statement_;
    WriteFor write_;
};

} // namespace

NotExpressible::NotExpressible(QString source)
    : RunTimeError(err::InternalError, mkl::runTimeText(err::InternalError, {source}), source) {}

bool concernsAllRows(mkl::Long error) {
    constexpr mkl::Long errors[] = {err::OutOfMemory,  err::InternalError,      err::DiskFull,
                                    err::ReadOnly,     err::DiskError,          err::Interrupted,
                                    err::NotPermitted, err::TransactionGivenUp, err::Locked};
    return std::ranges::find(errors, error) != std::end(errors);
}

std::shared_ptr<Statement> prepareLenient(Connection& connection, const QByteArray& strict, const QByteArray& lenient,
                                          WriteFor write) {
    if (!connection.substitute())
        return connection.prepare(connection.leavingOutFailedRows(lenient.isEmpty() ? strict : lenient), Access::Write);
    return std::make_shared<LenientStatement>(connection, strict, std::move(write));
}

std::shared_ptr<Statement> prepareOrSubstitute(Connection& connection, const QByteArray& native, Access access,
                                               const QList<jet::ColumnType>& types, WriteFor write) {
    if (!connection.substitute()) return connection.prepare(native, access);
    // What is too complex for one engine is so for all.
    constexpr qsizetype longText = 2000;
    Substitute& other = *connection.substitute();
    if (native.size() > longText) other.prepare(write(other.target()), access);
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
