#include "catalogue/CategoryForest.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

std::optional<Long> optionalLong(const Variant& value) {
    return value.isNull() ? std::nullopt : std::optional(value.toLong());
}

} // namespace

CategoryForest::CategoryForest(dao::Database& database) {
    const auto rows =
        database.OpenRecordset(u"SELECT [Kategorie-Schlüssel], [Parent], [Order], [Kategoriename], [Aktiv] "
                               "FROM [ARTIKEL/KATEGORIEN]"_s,
                               dao::dbOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
        const Variant name = rows->value(3), active = rows->value(4);
        categories_.append({rows->value(0).toLong(), optionalLong(rows->value(1)), optionalLong(rows->value(2)),
                            name.isNull() ? QString() : name.toText(), !active.isNull() && active.toBoolean()});
    }
    rows->Close();
    std::ranges::sort(categories_, {}, [](const Category& c) { return std::pair(c.order, c.key); });
    for (int i = 0; i < categories_.size(); ++i) {
        const Category& category = categories_[i];
        byKey_.insert(category.key, i);
        (category.parent ? children_[*category.parent] : roots_).append(i);
    }
}

QList<QList<int>> CategoryForest::siblingGroups() const {
    QList<QList<int>> groups;
    if (!roots_.isEmpty()) groups.append(roots_);
    QList<Long> parents = children_.keys();
    std::ranges::sort(parents);
    for (const Long parent : std::as_const(parents))
        groups.append(childrenOf(parent));
    return groups;
}

QList<CategoryForest::Step> CategoryForest::walk(const QList<int>& from) const {
    QList<Step> steps, open;
    for (auto i = from.crbegin(); i != from.crend(); ++i)
        open.append({*i, 1});
    // A ring hangs on no root, but a walk may start inside of one.
    QList<bool> visited(categories_.size(), false);
    while (!open.isEmpty()) {
        const Step step = open.takeLast();
        if (visited[step.category]) continue;
        visited[step.category] = true;
        steps.append(step);
        const QList<int> children = childrenOf(categories_[step.category].key);
        for (auto i = children.crbegin(); i != children.crend(); ++i)
            open.append({*i, step.level + 1});
    }
    return steps;
}

} // namespace mkl
