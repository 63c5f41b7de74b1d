#pragma once
#include "base/Ref.h"

#include <QtGlobal>
#include <memory>

namespace dao {

class Database;
class PlanCache;

/// Tells that as long as it lives most rows of a table are going to be read by statements which differ in one key
/// alone, as a tree is read level by level: "… WHERE [Parent]=17 ORDER BY [Order]". Where every statement costs a way
/// to a server and back, such statements are then answered from one that reads the rows of all keys at once: each with
/// its rows in its order, as they were at some moment since the walk began, until this connection changes something. A
/// statement that the server would refuse is sent by itself and fails where it is opened. Elsewhere it does nothing.
/// Walks nest; the outermost one counts.
class Walk {
public:
    explicit Walk(const Database& database);
    ~Walk();
    Q_DISABLE_COPY_MOVE(Walk)

private:
    std::shared_ptr<PlanCache> plans_;
};

} // namespace dao
