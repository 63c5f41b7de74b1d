#pragma once
// IIf, Choose and Switch compute nothing but the argument that they give back.
#include "jet/syntax/Syntax.h"

namespace jet {

enum class LazyKind : quint8 { IIf, Choose, Switch };

LazyKind lazyKindOf(const Function& function);

/// The arguments of which one is the result.
std::vector<const Expression*> branchesOf(const Call& call);
/// The type that all results have which are not Null; Unknown if they differ.
ColumnType commonType(const std::vector<const Expression*>& branches);

} // namespace jet
