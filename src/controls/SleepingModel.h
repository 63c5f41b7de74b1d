#pragma once
#include <QAbstractItemModel>

namespace mkl {

/// Base of the models over the items of a control. While nobody looks, a model sleeps from the first change on: it
/// counts as empty and signals nothing, so that filling a hidden control costs no redrawing. Waking it resets the
/// views once.
class SleepingModel : public QAbstractItemModel {
    Q_OBJECT

public:
    using QAbstractItemModel::QAbstractItemModel;

    bool asleep() const { return asleep_; }
    /// Whether somebody looks.
    void setWatched(bool watched) { watched_ = watched; }
    void wake();

    /// To be asked before every change of the rows: whether it has to be signalled.
    bool listening();

    /// Brackets around the change of all rows at once.
    void beginClear();
    void endClear();

private:
    bool watched_ = false;
    bool asleep_ = false;
};

} // namespace mkl
