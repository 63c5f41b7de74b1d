#pragma once
#include "jet/syntax/Syntax.h"

namespace jet {

/// What the names of an expression stand for: columns of the tables of a statement, or columns of a result.
class NameResolver {
public:
    /// A part of the sources: those that the expression can see.
    struct Range {
        int begin = 0, end = 0;
    };

    virtual ~NameResolver() = default;

    /// Binds the name to a column in the range; false if there is none. 3079 if several have it.
    virtual bool resolve(Name& name, Range range) const = 0;
    /// The type of the column to which the name was bound.
    virtual ColumnType typeOf(const Name& name) const = 0;
};

} // namespace jet
