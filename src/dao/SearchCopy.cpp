#include "dao/SearchCopy.h"

namespace dao {

const CopiedRows* SearchCopy::of(const DynasetRows& rows) {
    const Connection& connection = *rows.source().connection();
    const quint64 period = connection.exclusivePeriod();
    const quint64 stamp = connection.changeStamp();
    if (period == 0 || period != period_ || stamp != stamp_) {
        copy_ = {};
        period_ = period;
        stamp_ = stamp;
        return nullptr;
    }
    if (!copy_.values) copy_ = copyOf(rows);
    return &copy_;
}

// Exactly one change: no trigger or rule of the file has changed other rows along with it.
void SearchCopy::keepThroughRemoval(const Connection& connection, quint64 stampBefore) {
    const quint64 stamp = connection.changeStamp();
    if (stamp_ == stampBefore && stamp == stampBefore + 1) stamp_ = stamp;
}

} // namespace dao
