#pragma once
// Criteria over the rows of a result: what Find, Filter and Sort of a record set ask for.
#include "jet/model/Plan.h"
#include "jet/model/RowValues.h"

#include <QStringView>
#include <memory>
#include <span>

namespace jet {

/// A condition on one row, ready to be asked of many. Cheap to copy; several threads may share it.
///
/// A bare name is an output column, or, where none has that name, a column of a source. A qualified one is a column of
/// the source table of that name or alias. It means what it would mean in a WHERE clause, but a pattern with a broken
/// class matches nothing.
class Criterion {
public:
    /// Raises 3077 for a text that is no expression, 3070 unknown name, 3079 ambiguous name, 3085 unknown function,
    /// 3096 aggregate, 3464 clash of types, 3360 too complex.
    static Criterion parse(QStringView text, std::span<const OutputColumn> columns);

    /// Whether the row meets it; unknown counts as no. Raises what its operators and functions raise (11, 6, 13, …).
    bool holds(const RowValues& row) const;
    /// The output columns that it reads, ascending.
    const QList<int>& columns() const;

private:
    struct Body;
    explicit Criterion(std::shared_ptr<const Body> body);

    std::shared_ptr<const Body> body_;
};

} // namespace jet
