#pragma once
// The order of the rows of a result: what Sort of a record set asks for.
#include "jet/evaluation/Criterion.h"

namespace jet {

/// The values of any row of a result; value() and utf8() are those of the row moved to last.
class RowReader : public RowValues {
public:
    virtual void moveTo(qsizetype row) = 0;
};

/// Expressions, each ascending or descending. Null comes first ascending and last descending.
class SortOrder {
public:
    /// Reads "a, b DESC" as it would stand behind ORDER BY. Raises what Criterion::parse raises, but 3138 for a text
    /// that is no such list and 3097 for an aggregate. An empty text is the order of the rows as they stand.
    static SortOrder parse(QStringView text, std::span<const OutputColumn> columns);

    /// Puts row numbers into order; those of equal rows keep theirs.
    void sort(QList<qsizetype>& rows, RowReader& reader) const;

private:
    struct Body;
    explicit SortOrder(std::shared_ptr<const Body> body);

    std::shared_ptr<const Body> body_;
};

} // namespace jet
