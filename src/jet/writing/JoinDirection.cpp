#include "jet/writing/JoinDirection.h"

#include "jet/binding/Typing.h"

#include <algorithm>

namespace jet {

namespace {

/// "source.column = otherSource.…"; otherSource is -1 for a value that no table gives.
struct Equality {
    int source, column, otherSource;
};

void markOptional(const FromItem& item, bool optional, std::vector<bool>& marks) {
    if (const auto* table = std::get_if<TableSource>(&item.node)) {
        marks[static_cast<size_t>(table->source)] = optional;
        return;
    }
    const Join& join = std::get<Join>(item.node);
    markOptional(*join.left, optional || join.kind == JoinKind::Right, marks);
    markOptional(*join.right, optional || join.kind == JoinKind::Left, marks);
}

const Name* columnOf(const Expression& expression) {
    const auto* const name = withoutAlias(expression).as<Name>();
    return name && name->source >= 0 ? name : nullptr;
}

void collect(const Expression& condition, std::vector<Equality>& equalities) {
    if (const auto* junction = condition.as<Junction>(); junction && junction->isAnd)
        for (const ExpressionPtr& operand : junction->operands)
            collect(*operand, equalities);
    const auto* const binary = condition.as<Binary>();
    if (!binary || binary->op != Op::Equal) return;
    const Name* const left = columnOf(*binary->left);
    const Name* const right = columnOf(*binary->right);
    if (left && (right || binary->right->as<Literal>()))
        equalities.push_back({left->source, left->column, right ? right->source : -1});
    if (right && (left || binary->left->as<Literal>()))
        equalities.push_back({right->source, right->column, left ? left->source : -1});
}

void collect(const FromItem& item, std::vector<Equality>& equalities) {
    const auto* const join = std::get_if<Join>(&item.node);
    if (!join) return;
    collect(*join->left, equalities);
    collect(*join->right, equalities);
    collect(*join->on, equalities);
}

class Determination {
public:
    explicit Determination(const BoundSelect& select)
        : select_(select) {
        for (const FromPtr& item : *select.from)
            collect(*item, equalities_);
        for (const Expression* term : select.where)
            collect(*term, equalities_);
    }

    bool determinesAll(int first) {
        known_.assign(select_.scope.sources().size(), false);
        known_[static_cast<size_t>(first)] = true;
        while (growsByOne())
            ;
        return std::find(known_.begin(), known_.end(), false) == known_.end();
    }

private:
    bool growsByOne() {
        for (int source = 0; source < static_cast<int>(known_.size()); ++source) {
            if (known_[static_cast<size_t>(source)] || !hasKnownKey(source)) continue;
            known_[static_cast<size_t>(source)] = true;
            return true;
        }
        return false;
    }

    bool hasKnownKey(int source) const {
        const Table& table = *select_.scope[source].table;
        return isKnown(source, table.primaryKey) ||
               std::any_of(table.indexes.begin(), table.indexes.end(),
                           [&](const Index& index) { return index.unique && isKnown(source, index.columns); });
    }

    bool isKnown(int source, const QList<int>& columns) const {
        return !columns.isEmpty() && std::all_of(columns.begin(), columns.end(), [&](int column) {
            return std::any_of(equalities_.begin(), equalities_.end(), [&](const Equality& equality) {
                return equality.source == source && equality.column == column &&
                       (equality.otherSource < 0 || known_[static_cast<size_t>(equality.otherSource)]);
            });
        });
    }

    const BoundSelect& select_;
    std::vector<Equality> equalities_;
    std::vector<bool> known_;
};

} // namespace

std::vector<bool> optionalSources(const BoundSelect& select) {
    std::vector<bool> marks(select.scope.sources().size());
    for (const FromPtr& item : *select.from)
        markOptional(*item, false, marks);
    return marks;
}

int determiningSource(const BoundSelect& select) {
    Determination determination(select);
    for (int source = 0; source < static_cast<int>(select.scope.sources().size()); ++source)
        if (determination.determinesAll(source)) return source;
    return -1;
}

} // namespace jet
