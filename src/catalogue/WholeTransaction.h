#pragma once
#include "base/RunTimeError.h"
#include "dao/Workspace.h"

namespace mkl {

/// A transaction that is undone unless it comes to its end.
class WholeTransaction {
public:
    explicit WholeTransaction(dao::Workspace& workspace)
        : workspace_(workspace) {
        workspace_.BeginTrans();
    }
    ~WholeTransaction() {
        try {
            if (open_) workspace_.Rollback();
        } catch (const RunTimeError&) {
            // The end of the workspace undoes it as well.
        }
    }
    WholeTransaction(const WholeTransaction&) = delete;
    WholeTransaction& operator=(const WholeTransaction&) = delete;

    void commit() {
        workspace_.CommitTrans();
        open_ = false;
    }

private:
    dao::Workspace& workspace_;
    bool open_ = true;
};

} // namespace mkl
