#pragma once
// A session helper that gives out keys with one digit.
#include "core/SessionHelper.h"

namespace mkl {

class FixedReplica final : public SessionHelper {
public:
    explicit FixedReplica(Long digit)
        : info_(makeRef<Info>(digit)) {}

    Ref<mkl::ReplicaInfo> ReplicaInfo() const override { return info_; }

private:
    class Info final : public mkl::ReplicaInfo {
    public:
        explicit Info(Long digit)
            : digit_(digit) {}
        Long ReplicaDigit() const override { return digit_; }

    private:
        Long digit_;
    };

    Ref<mkl::ReplicaInfo> info_;
};

} // namespace mkl
