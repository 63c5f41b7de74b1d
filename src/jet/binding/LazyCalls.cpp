#include "jet/binding/LazyCalls.h"

#include "jet/functions/Functions.h"

namespace jet {

LazyKind lazyKindOf(const Function& function) {
    if (function.name == u"IIf") return LazyKind::IIf;
    return function.name == u"Choose" ? LazyKind::Choose : LazyKind::Switch;
}

std::vector<const Expression*> branchesOf(const Call& call) {
    const size_t step = lazyKindOf(*call.function) == LazyKind::Switch ? 2 : 1;
    std::vector<const Expression*> branches;
    for (size_t i = 1; i < call.arguments.size(); i += step)
        branches.push_back(call.arguments[i].get());
    return branches;
}

ColumnType commonType(const std::vector<const Expression*>& branches) {
    const Expression* known = nullptr;
    for (const Expression* branch : branches) {
        if (branch->isNull()) continue;
        if (known && known->type != branch->type) return ColumnType::Unknown;
        known = branch;
    }
    return known ? known->type : ColumnType::Unknown;
}

} // namespace jet
