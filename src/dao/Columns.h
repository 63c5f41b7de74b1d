#pragma once
#include "jet/model/Plan.h"

#include <QHash>
#include <QStringView>

namespace dao {

/// The columns of a record set, shared by all record sets of one translation. Finds names fast.
class Columns {
public:
    explicit Columns(QList<jet::OutputColumn> columns);

    const QList<jet::OutputColumn>& list() const { return columns_; }
    int count() const { return static_cast<int>(columns_.size()); }
    const jet::OutputColumn& at(int ordinal) const { return columns_.at(ordinal); }
    /// By name, by "TABLE.Column", both without regard to case; -1 if there is none.
    int find(QStringView name) const;

private:
    QList<jet::OutputColumn> columns_;
    QHash<QString, int> folded_;
};

} // namespace dao
