#pragma once
// What a host supplies so that several branch offices can give out keys without clashes.
#include "base/Ref.h"
#include "base/types.h"

namespace mkl {

class ReplicaInfo : public RefCounted {
public:
    /// The last digit of every key that this replica gives out.
    virtual Long ReplicaDigit() const = 0;
};

class SessionHelper : public RefCounted {
public:
    virtual Ref<mkl::ReplicaInfo> ReplicaInfo() const = 0;
};

} // namespace mkl
