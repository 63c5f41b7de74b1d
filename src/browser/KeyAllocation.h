#pragma once
#include "base/types.h"

#include <QString>

namespace mkl {

class ArtCatBrowserPrivate;

/// Keys that the program gives out itself, so that replicas of a catalogue never give the same one: a running number
/// with the digit of the replica behind it.
class KeyAllocation {
public:
    explicit KeyAllocation(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The next key of this replica, both names without brackets; -1 after a failure, which also leaves the
    /// hourglass.
    Long NewID(const QString& Table, const QString& KeyField);

private:
    Long nextKey(const QString& table, const QString& keyField) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
