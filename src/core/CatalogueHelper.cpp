#include "core/CatalogueHelper.h"

#include "catalogue/CatalogueReplica.h"

namespace mkl {

namespace {

class CatalogueReplicaInfo final : public ReplicaInfo {
public:
    explicit CatalogueReplicaInfo(Ref<dao::Database> database)
        : database_(std::move(database)) {}

    Long ReplicaDigit() const override { return replicaDigit(*database_); }

private:
    Ref<dao::Database> database_;
};

class CatalogueHelper final : public SessionHelper {
public:
    explicit CatalogueHelper(const Ref<dao::Database>& database)
        : info_(makeRef<CatalogueReplicaInfo>(database)) {}

    Ref<mkl::ReplicaInfo> ReplicaInfo() const override { return info_; }

private:
    Ref<mkl::ReplicaInfo> info_;
};

} // namespace

Ref<SessionHelper> newSessionHelper(const Ref<dao::Database>& database) {
    static_cast<void>(*database); // raises 91 here and not at the first key
    return makeRef<CatalogueHelper>(database);
}

} // namespace mkl
