#include "dao/TransactionWatch.h"

#include "dao/WorkspaceNotifier.h"

namespace dao {

TransactionWatch::TransactionWatch(mkl::Ref<Workspace> workspace)
    : workspace_(std::move(workspace)) {
    if (!workspace_) return;
    depthBefore_ = workspace_->transactionDepth();
    ++workspace_->watches_;
}

TransactionWatch::~TransactionWatch() {
    if (!workspace_ || --workspace_->watches_ > 0) return;
    const int depth = workspace_->transactionDepth();
    if (depth > depthBefore_) Q_EMIT workspace_->notifier().transactionLeftOpen(depth);
}

} // namespace dao
