#pragma once
#include <QByteArrayList>

namespace dao {

/// The savepoints of a transaction. Those of its levels go to the server with the next statement, in its round trip.
/// A statement needs one of its own only where something was changed since the last one: it stays behind a query, and
/// the next statement returns to it as well.
class PostgresSavepoints {
public:
    /// A level begins or ends.
    void set(const QByteArray& level);
    void release(const QByteArray& level);
    /// The transaction is over.
    void forget();
    /// What has to be sent before anything else is.
    QByteArrayList takeDue();
    /// The same before what is no statement of run(): no savepoint of a statement is left.
    QByteArrayList settle();

    /// Where a failed statement returns to; made by the way where there is none.
    const QByteArray& point() const { return point_; }
    void setOwnPoint() { point_ = ownPoint; }
    bool hasOwnPoint() const { return point_ == ownPoint; }
    void forgetPoint() { point_.clear(); }

    static constexpr const char* ownPoint = "statement"; ///< no level bears that name

private:
    QByteArrayList due_;
    QByteArray point_; ///< since it nothing was changed; empty if there is none
};

} // namespace dao
