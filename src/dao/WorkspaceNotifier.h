#pragma once
#include <QObject>

namespace dao {

/// Tells a host what happens to a workspace. Belongs to the workspace and lives as long.
class WorkspaceNotifier final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    ~WorkspaceNotifier() override;

Q_SIGNALS:
    /// A command has returned with more transaction levels open than it began with; depth is the number of them now.
    /// What it and later commands store is lost unless the host commits, and until then other programs cannot write.
    void transactionLeftOpen(int depth);
};

} // namespace dao
