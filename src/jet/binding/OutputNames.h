#pragma once

namespace jet {

struct BoundSelect;

/// Names the output columns: by alias, else by column, expressions Expr1000 and so on. Where columns share a name,
/// each of them is called "TABLE.Column". 3141 for two aliases of one name.
void nameColumns(BoundSelect& select);

} // namespace jet
