#pragma once
#include "dao/Workspace.h"

#include <utility>

namespace mkl {

/// The transaction of one command, for its error frame. Nothing happens at its end: what a command leaves open on
/// purpose stays open.
class TransMark {
public:
    explicit TransMark(Ref<dao::Workspace> workspace)
        : workspace_(std::move(workspace)) {}

    const Ref<dao::Workspace>& workspace() const { return workspace_; }
    bool isOpen() const { return isOpen_; }

    void begin() {
        workspace_->BeginTrans();
        isOpen_ = true;
    }
    /// The mark stays set where the commit fails.
    void commit() {
        workspace_->CommitTrans();
        isOpen_ = false;
    }
    void rollbackIfOpen() {
        if (std::exchange(isOpen_, false)) workspace_->Rollback();
    }

private:
    Ref<dao::Workspace> workspace_;
    bool isOpen_ = false;
};

} // namespace mkl
