#pragma once
#include "dao/DynasetRows.h"

namespace dao {

/// The rows of a dynaset, copied for whoever searches them again and again while no other program can change anything,
/// as a command does in its transaction. The first search is better served by the rows up to the match.
class SearchCopy {
public:
    /// The copy, if it shows what is stored; nullptr if the rows are to be read one by one.
    const CopiedRows* of(const DynasetRows& rows);
    /// A row of the dynaset was deleted, when the connection had that stamp. It stays in the copy.
    void keepThroughRemoval(const Connection& connection, quint64 stampBefore);

private:
    CopiedRows copy_; ///< without values before the second search
    quint64 period_ = 0;
    quint64 stamp_ = 0;
};

} // namespace dao
