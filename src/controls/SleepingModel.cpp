#include "controls/SleepingModel.h"

namespace mkl {

void SleepingModel::wake() {
    if (!asleep_) return;
    beginResetModel();
    asleep_ = false;
    endResetModel();
}

bool SleepingModel::listening() {
    if (asleep_ || watched_) return !asleep_;
    beginResetModel();
    asleep_ = true;
    endResetModel();
    return false;
}

void SleepingModel::beginClear() {
    if (listening()) beginResetModel();
}

void SleepingModel::endClear() {
    if (!asleep_) endResetModel();
}

} // namespace mkl
