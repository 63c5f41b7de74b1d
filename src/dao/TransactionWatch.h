#pragma once
#include "dao/Workspace.h"

namespace dao {

/// Stands around one command. If more transaction levels are open at its end than there were at its begin, the
/// workspace's notifier says so. Of commands within commands the outermost counts.
class TransactionWatch {
public:
    explicit TransactionWatch(mkl::Ref<Workspace> workspace); ///< watches nothing without a workspace
    ~TransactionWatch();
    Q_DISABLE_COPY_MOVE(TransactionWatch)

private:
    mkl::Ref<Workspace> workspace_;
    int depthBefore_ = 0;
};

} // namespace dao
