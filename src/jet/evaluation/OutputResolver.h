#pragma once
#include "jet/binding/NameResolver.h"
#include "jet/model/Plan.h"

#include <functional>
#include <span>

namespace jet {

/// Finds names among the columns of a result; Name::column is then the number of the output column.
class OutputResolver final : public NameResolver {
public:
    explicit OutputResolver(std::span<const OutputColumn> columns)
        : columns_(columns) {}

    /// A bare name is an output column, or else the column of a source; a qualified one is a column of the source
    /// with that alias, of the table of that name, or an output column called "T.F". 3070 for a name that is nothing
    /// of these, 3079 for one that is several columns.
    bool resolve(Name& name, Range range) const override;
    ColumnType typeOf(const Name& name) const override { return column(name.column).type; }

private:
    using Test = std::function<bool(const OutputColumn&)>;
    int find(const Name& name, const Test& test) const;
    int findBare(const Name& name) const;
    int findQualified(const Name& name) const;
    const OutputColumn& column(int number) const { return columns_[static_cast<size_t>(number)]; }

    std::span<const OutputColumn> columns_;
};

} // namespace jet
