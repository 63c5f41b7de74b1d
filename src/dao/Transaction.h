#pragma once
#include <QByteArray>

namespace dao {

class Connection;

/// The levels of transaction of one connection: the outermost is the engine's, the inner ones are savepoints.
/// An error may make the engine give the whole transaction up by itself. It is doomed from then on: what follows
/// must not be stored alone, so every write and commit() fail until the outermost level is rolled back.
class Transaction {
public:
    explicit Transaction(Connection& connection)
        : connection_(connection) {}

    void begin();
    void beginSingle(); ///< the same for one action alone
    void commit();      ///< 3034 without a transaction, 3246 if it is doomed; stays open where it fails
    void rollback();    ///< 3034 without a transaction
    int depth() const { return depth_; }
    bool isDoomed() const;
    /// 3246 if it is doomed.
    void requireSound() const;

    /// Runs the action in a level of its own and undoes that where it fails.
    template<class Action>
    void atomically(Action&& action) {
        beginSingle();
        try {
            action();
            commit();
        } catch (...) {
            rollback();
            throw;
        }
    }

private:
    static QByteArray savepointName(int depth);

    Connection& connection_;
    int depth_ = 0;
};

} // namespace dao
