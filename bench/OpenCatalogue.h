#pragma once
// An empty catalogue on either engine, open twice: through the data layer and by the engine's plain client interface.
#include "bench/RawClient.h"
#include "dao/Workspace.h"

#include <QTemporaryDir>

namespace bench {

class OpenCatalogue {
public:
    explicit OpenCatalogue(Engine engine);
    ~OpenCatalogue();
    Q_DISABLE_COPY_MOVE(OpenCatalogue)

    /// Why there is no such engine; empty if there is one.
    static QString missing(Engine engine);

    Engine engine() const { return engine_; }
    const QString& name() const { return name_; }
    /// Tells the engine how many rows there are now.
    void settle() const;

private:
    const Engine engine_;
    QTemporaryDir folder_;
    const QString name_;

public:
    mkl::Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    mkl::Ref<dao::Database> database;
    std::unique_ptr<RawClient> raw;
};

} // namespace bench
