#include "dao/postgres/PostgresSavepoints.h"

#include <utility>

namespace dao {

void PostgresSavepoints::set(const QByteArray& level) {
    if (hasOwnPoint()) due_.append(QByteArray("RELEASE ") + ownPoint);
    due_.append("SAVEPOINT " + level);
    point_ = level;
}

// Those set since go with it. What it did belongs to the level around it from now on.
void PostgresSavepoints::release(const QByteArray& level) {
    due_.append("RELEASE " + level);
    point_.clear();
}

void PostgresSavepoints::forget() {
    due_.clear();
    point_.clear();
}

QByteArrayList PostgresSavepoints::takeDue() {
    return std::exchange(due_, {});
}

QByteArrayList PostgresSavepoints::settle() {
    if (hasOwnPoint()) due_.append(QByteArray("RELEASE ") + ownPoint);
    point_.clear();
    return takeDue();
}

} // namespace dao
