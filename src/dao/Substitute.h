#pragma once
#include "base/RunTimeError.h"
#include "dao/Connection.h"

#include <functional>

namespace dao {

/// Thrown where an engine cannot express a statement of the dialect, or meets a value for which it cannot.
class NotExpressible final : public mkl::RunTimeError {
public:
    explicit NotExpressible(QString source = {});
};

/// Whether an error has nothing to do with the row it met: a lock, a full disk, a lost server, a lacking right.
bool concernsAllRows(mkl::Long error);

/// Runs statements in place of an engine that cannot express them.
class Substitute {
public:
    virtual ~Substitute() = default;
    /// What its texts are written for.
    virtual const jet::Target& target() const = 0;
    /// As Connection::prepare().
    virtual std::shared_ptr<Statement> prepare(const QByteArray& native, Access access) = 0;
    /// An action that leaves out the rows which the engine refuses.
    virtual std::shared_ptr<Statement> prepareLenient(const QByteArray& native) = 0;
};

/// Writes the statement anew for another engine.
using WriteFor = std::function<QByteArray(const jet::Target&)>;

/// The native text prepared. Where the engine cannot express it, or cannot for the values of a run, the substitute of
/// the connection runs what is written for it. types are those of the columns that a query gives; empty for an action.
std::shared_ptr<Statement> prepareOrSubstitute(Connection& connection, const QByteArray& native, Access access,
                                               const QList<jet::ColumnType>& types, WriteFor write);

/// An action that leaves out failing rows. strict is the action as a whole, lenient the same without the rows whose
/// values cannot be stored; write gives the latter.
std::shared_ptr<Statement> prepareLenient(Connection& connection, const QByteArray& strict, const QByteArray& lenient,
                                          WriteFor write);

} // namespace dao
